#pragma once

#include <QtGlobal>

/// A colour that is stored as a number: red in the lowest byte, then green, then blue, so that 255 is red and 16384 a
/// dark green.
struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Colour&) const = default;

    static constexpr Colour fromNumber(qint32 number) {
        return {number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF};
    }
    constexpr qint32 number() const { return red | green << 8 | blue << 16; }
};
