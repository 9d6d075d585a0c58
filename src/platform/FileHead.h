#pragma once

#include <QByteArray>
#include <QString>

/// Returns the first bytes of a file, at most `size`. Opens only regular files (or links to one) and never blocks.
/// Returns an empty array for a folder, FIFO, socket or device, and for a file that doesn't exist or can't be read.
QByteArray fileHead(const QString& path, qsizetype size);
