#include "shell/bars/FindBarHistory.h"

#include "shell/session/RecentList.h"

namespace {

constexpr RecentList::Rule Rule{.capacity = FindBarHistory::Most};

}  // namespace

FindBarHistory::Change FindBarHistory::AddSearchKey(QStringList& keys, const QString& pText, bool pMoveToTop) {
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

void FindBarHistory::addLines(QStringList& keys, const QStringList& lines) {
    for (const QString& line : lines)
        AddSearchKey(keys, line, false);
}

QStringList FindBarHistory::toLines(const QStringList& keys) {
    return RecentList(Rule, keys).oldestFirst();
}
