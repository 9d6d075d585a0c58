#include "document/SaveFormats.h"

#include "text/codec/SaveFlags.h"

#include <algorithm>
#include <array>

namespace SaveFormats {

const SaveFormat& row(int number) {
    static const std::array<SaveFormat, 5> table{{
        {AsLoaded, QString(), SaveFlags::AsLoaded},
        {Ansi, QStringLiteral(" (ANSI)"), SaveFlags::Ansi},
        {Utf8, QStringLiteral(" (UTF-8)"), SaveFlags::Utf8WithMark},
        {Unicode, QStringLiteral(" (Unicode)"), SaveFlags::Utf16WithMark},
        {NoByteOrderMark, QStringLiteral(" (No Byte Order Mark)"), SaveFlags::Utf8},
    }};
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const SaveFormat& f) { return f.number == number; });
    return found == table.end() ? table.front() : *found;
}

int flagWord(int number, bool clearHistory) {
    return row(number).flagWord | (clearHistory ? SaveFlags::ClearHistory : 0);
}

}  // namespace SaveFormats
