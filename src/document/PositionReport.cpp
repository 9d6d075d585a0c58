#include "document/PositionReport.h"

#include "editor/control/TextControl.h"

#include <utility>

PositionReport::Place PositionReport::placeIn(const TextControl& control) {
    return {control.changeCount(), control.SelStart(), control.SelEnd()};
}

void PositionReport::edited(const TextControl& control) {
    m_reported = placeIn(control);
}

bool PositionReport::isNewAfterMove(const TextControl& control) {
    return std::exchange(m_reported, std::nullopt) != placeIn(control);
}
