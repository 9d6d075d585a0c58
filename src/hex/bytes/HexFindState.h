#pragma once

#include "hex/bytes/HexNeedle.h"

#include <QString>

enum class HexFindDirection : qint16 { Down = 0, Up = 1 };

/// The last search of all hex views. The composition root owns the one there is.
struct HexFindState {
    QString LastFindText;
    HexFindType LastFindType = HexFindType::Bytes;
    HexFindDirection LastFindDirection = HexFindDirection::Down;
    bool HexFindActive = false;  ///< there is something to repeat
};
