#include "document/TextCounts.h"

#include <algorithm>

namespace {

bool isBlank(QChar unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

}  // namespace

namespace TextCounts {

qint64 words(QStringView text) {
    qint64 count = 0;
    bool inWord = false;
    for (const QChar unit : text) {
        const bool wordGoesOn = !isBlank(unit);
        count += wordGoesOn && !inWord;
        inWord = wordGoesOn;
    }
    return count;
}

qint64 charactersWithoutBlanks(QStringView text) {
    return std::count_if(text.begin(), text.end(), [](QChar unit) { return !isBlank(unit); });
}

}  // namespace TextCounts
