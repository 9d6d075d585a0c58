#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Sorts the lines of a UTF-8 text by their code points; equal lines keep their order. Line ends (LF, CR LF or CR) are
/// not part of a line: each stays where it is, so if the last line has no line end, the result has none at its end
/// either.
namespace LineSort {

enum class Order { Ascending, Descending };

std::string sorted(std::string_view text, Order order);
/// The same, and replaces the numbers of lines in `followed`, from 0 and each once, by those that the lines have then.
std::string sorted(std::string_view text, Order order, std::vector<std::size_t>& followed);

}  // namespace LineSort
