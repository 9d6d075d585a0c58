#include "text/lines/TextCounts.h"

#include "text/codec/Utf16Units.h"

#include <algorithm>

namespace {

/// Also correct for a single byte of UTF-8, because bytes of longer characters have none of these values.
template <typename Unit>
bool isBlank(Unit unit) {
    return unit == Unit(' ') || unit == Unit('\t') || unit == Unit('\r') || unit == Unit('\n');
}

template <typename Text>
qint64 countWords(Text text) {
    qint64 count = 0;
    bool inWord = false;
    for (const auto unit : text) {
        const bool wordGoesOn = !isBlank(unit);
        count += wordGoesOn && !inWord;
        inWord = wordGoesOn;
    }
    return count;
}

template <typename Text>
qint64 countBlanks(Text text) {
    return std::count_if(text.begin(), text.end(), [](auto unit) { return isBlank(unit); });
}

}  // namespace

namespace TextCounts {

qint64 words(QStringView text) {
    return countWords(text);
}

qint64 words(std::string_view utf8) {
    return countWords(utf8);
}

qint64 charactersWithoutBlanks(QStringView text) {
    return text.size() - countBlanks(text);
}

qint64 charactersWithoutBlanks(std::string_view utf8) {
    return countUtf16Units(utf8) - countBlanks(utf8);
}

}  // namespace TextCounts
