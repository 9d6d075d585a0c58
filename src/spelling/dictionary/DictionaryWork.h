#pragma once

#include "platform/ChildProcess.h"
#include "spelling/dictionary/Dictionary.h"

#include <string_view>

/// The child process that holds a dictionary: it loads it, answers with a DictionaryAnswer::Loaded or ::Damaged, and
/// then every request with one message.
///
/// A request is one letter and words in UTF-8, each ended by a NUL. Check: the answer has a '1' for each known word and
/// a '0' for each other. Suggest: the answer has the suggestions for the first word, in the same form.
namespace DictionaryWork {

inline constexpr char Loaded = 'L';
inline constexpr char Damaged = 'D';  ///< a sentence in UTF-8 follows
inline constexpr char Check = 'C';
inline constexpr char Suggest = 'S';

inline constexpr std::size_t MostSuggestions = 20;

ChildProcess::Work of(const Dictionary& dictionary);

}  // namespace DictionaryWork
