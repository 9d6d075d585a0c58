#include "document/PositionReport.h"

#include <utility>

bool PositionReport::isNewAfterMove(const Place& now) {
    return std::exchange(m_reported, std::nullopt) != now;
}
