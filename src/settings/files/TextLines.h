#pragma once

#include <QByteArrayView>
#include <QStringList>

/// The lines of a text file of the program's own, ended by CR LF or LF; the encoding is found out. A last line without
/// an end counts, an empty one behind the last end does not.
QStringList linesOf(QByteArrayView bytes);
