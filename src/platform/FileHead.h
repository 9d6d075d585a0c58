#pragma once

#include <QByteArray>
#include <QString>

/// The first bytes of a file, at most `size` of them. Only a regular file (a link to one too) is opened, and never
/// waited for: a folder, FIFO, socket or device gives nothing, as does what isn't there or can't be read.
QByteArray fileHead(const QString& path, qsizetype size);
