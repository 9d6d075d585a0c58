#pragma once

#include <QByteArrayView>
#include <QString>

/// The formats in which a block of bytes is copied to the clipboard, in the order of their option buttons.
enum class BlockForm { HexValues, CSource, PascalSource };

/// The text of at least one byte, sixteen on a line; lines end in CR LF.
QString blockText(QByteArrayView bytes, BlockForm form);
