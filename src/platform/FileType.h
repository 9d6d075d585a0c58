#pragma once

#include <QByteArrayView>
#include <QString>

/// Number of bytes at the start of a file that both functions examine.
inline constexpr qsizetype FileHeadSize = 300;

/// Reports whether the file should open in hex mode: its first bytes contain one of the values 1, 2, 3 and 255. Returns
/// false for a file that doesn't exist, can't be read or is not regular; such a file is never opened.
bool IsBinaryFile(const QString& path);

/// Returns the name of the file type for these first bytes. Fewer bytes are padded with zeros, more are ignored. The
/// result is independent of IsBinaryFile.
QString fileTypeName(QByteArrayView head);
