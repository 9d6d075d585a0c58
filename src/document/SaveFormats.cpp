#include "document/SaveFormats.h"

#include "text/codec/SaveFlags.h"

#include <algorithm>
#include <array>

namespace SaveFormats {

const SaveFormat& row(int number) {
    static const std::array<SaveFormat, 5> table{{
        {AsLoaded, QString(), SaveFlags::AsLoaded},
        {Ansi, u" (ANSI)"_qs, SaveFlags::Ansi},
        {Utf8, u" (UTF-8)"_qs, SaveFlags::Utf8WithMark},
        {Unicode, u" (Unicode)"_qs, SaveFlags::Utf16WithMark},
        {NoByteOrderMark, u" (No Byte Order Mark)"_qs, SaveFlags::Utf8},
    }};
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const SaveFormat& f) { return f.number == number; });
    return found == table.end() ? table.front() : *found;
}

int flagWord(int number, bool clearHistory) {
    return row(number).flagWord | (clearHistory ? SaveFlags::ClearHistory : 0);
}

}  // namespace SaveFormats
