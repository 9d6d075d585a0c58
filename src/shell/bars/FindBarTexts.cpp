#include "shell/bars/FindBarTexts.h"

#include "shell/session/RecentList.h"

namespace {

constexpr RecentList::Rule Rule{.capacity = FindBarTexts::Most};

}  // namespace

FindBarTexts::Change FindBarTexts::AddSearchKey(QStringList& keys, const QString& pText, bool pMoveToTop) {
    if (pText.trimmed().isEmpty())
        return Change::Nothing;
    RecentList list(Rule, keys);
    const bool isPresent = list.contains(pText);
    if (isPresent && !pMoveToTop)
        return Change::Nothing;
    list.add(pText);
    keys = list.entries();
    return isPresent ? Change::Raised : Change::Added;
}

void FindBarTexts::addLines(QStringList& keys, const QStringList& lines) {
    for (const QString& line : lines)
        AddSearchKey(keys, line, false);
}

QStringList FindBarTexts::toLines(const QStringList& keys) {
    return RecentList(Rule, keys).oldestFirst();
}
