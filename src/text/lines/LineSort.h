#pragma once

#include <string>
#include <string_view>

/// The lines of a UTF-8 text in the order of their code points, lines that are equal in the order they had. Line ends
/// (LF, CR LF or CR) are no part of a line: each stays where it is, so a last line without one leaves the text without
/// one at its end.
namespace LineSort {

enum class Order { Ascending, Descending };

std::string sorted(std::string_view text, Order order);

}  // namespace LineSort
