#include "widgets/StoredColour.h"

namespace {

constexpr int BitsOfAPart = 8;
constexpr qint64 LargestPart = 0xFF;

int part(qint64 number, int index) {
    return static_cast<int>(number >> index * BitsOfAPart & LargestPart);
}

}  // namespace

QColor StoredColour::colourOf(qint64 number) {
    return {part(number, 0), part(number, 1), part(number, 2)};
}

qint32 StoredColour::numberOf(const QColor& colour) {
    return colour.red() | colour.green() << BitsOfAPart | colour.blue() << 2 * BitsOfAPart;
}
