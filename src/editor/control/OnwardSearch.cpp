#include "editor/control/OnwardSearch.h"

namespace {

std::unique_ptr<MatchScan> scanFrom(const OnwardSearch& search, qint64 byte) {
    auto scan = std::make_unique<MatchScan>(search.pattern, search.text, search.map, byte);
    if (search.watch)
        scan->watchedBy(search.watch());
    return scan;
}

bool findsFree(MatchScan& scan, const OnwardSearch& search) {
    if (!scan.next())
        return false;
    return !search.isTaken || !search.isTaken(scan.match()) || scan.next();
}

}  // namespace

OnwardMatch nextMatch(const OnwardSearch& search, bool around) {
    auto scan = scanFrom(search, search.from);
    if (findsFree(*scan, search))
        return {std::move(scan), false, {}};
    if (scan->error() || !around)
        return {nullptr, false, scan->error()};
    scan = scanFrom(search, 0);
    if (!search.pattern.seesTextAsOne())
        scan->stopBehind(search.from);
    if (scan->next())
        return {std::move(scan), true, {}};
    return {nullptr, true, scan->error()};
}
