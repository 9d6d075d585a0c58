#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What is looked at in the two files of a dictionary before the library reads them. The library neither reports most
/// faults nor bounds what a damaged file makes it reserve. Works on bytes; no Qt, so that a child process may use it.
namespace DictionaryHead {

/// Files larger than these are refused.
inline constexpr std::int64_t MostAffixBytes = 64 * 1024 * 1024;
inline constexpr std::int64_t MostWordBytes = 256 * 1024 * 1024;
/// How much of the word list is looked at.
inline constexpr std::size_t HeadBytes = 64 * 1024;

/// Why this cannot be the whole of an affix file; empty when it can.
std::string affixFault(std::string_view affix);

/// Why this cannot be the beginning of a word list of so many bytes; empty when it can.
std::string wordsFault(std::string_view head, std::int64_t size);

}  // namespace DictionaryHead
