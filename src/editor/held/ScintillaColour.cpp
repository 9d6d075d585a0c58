#include "editor/held/ScintillaColour.h"

#include "widgets/StoredColour.h"

long ScintillaColour::number(const QColor& colour) {
    return StoredColour::numberOf(colour);
}
