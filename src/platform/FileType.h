#pragma once

#include <QByteArrayView>
#include <QString>

/// How much of a file's start both questions look at, in bytes.
inline constexpr qsizetype FileHeadSize = 300;

/// Whether the file should open in hex mode: one of the bytes 1, 2, 3 and 255 stands in its head. False for what
/// isn't there, can't be read, or is no regular file; such a one is never opened.
bool IsBinaryFile(const QString& path);

/// The name for what kind of file starts with these bytes; missing ones up to the size of a head count as zero, those
/// beyond it aren't looked at. Has no part in IsBinaryFile.
QString fileTypeName(QByteArrayView head);
