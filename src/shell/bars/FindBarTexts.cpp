#include "shell/bars/FindBarTexts.h"

#include <algorithm>
#include <iterator>

FindBarTexts::Change FindBarTexts::AddSearchKey(QStringList& keys, const QString& pText, bool pMoveToTop) {
    if (pText.trimmed().isEmpty())
        return Change::Nothing;
    const qsizetype present = keys.indexOf(pText);
    if (present < 0) {
        if (keys.size() >= Most)
            keys.removeAt(Most - 1);
        keys.prepend(pText);
        return Change::Added;
    }
    if (!pMoveToTop)
        return Change::Nothing;
    keys.move(present, 0);
    return Change::Raised;
}

QStringList FindBarTexts::fromLines(const QStringList& lines) {
    QStringList keys;
    for (const QString& line : lines)
        AddSearchKey(keys, line, false);
    return keys;
}

QStringList FindBarTexts::toLines(const QStringList& keys) {
    QStringList lines;
    std::ranges::reverse_copy(keys, std::back_inserter(lines));
    return lines;
}
