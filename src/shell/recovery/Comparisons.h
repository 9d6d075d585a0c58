#pragma once

#include "shell/recovery/frmDifferences.h"

#include <QByteArray>
#include <QString>

/// The work of frmDifferences: a file as it is now, compared with what was recovered of it. For any thread.
namespace Comparisons {

/// Larger files are not compared line by line, in bytes.
inline constexpr qint64 MostBytes = 256LL * 1024 * 1024;

/// `recovered` is UTF-8. The file is read as it would be opened; an empty path stands for an empty file.
DifferencesFound ofTexts(const QString& path, const QByteArray& recovered, const std::atomic<bool>& cancelled);

/// Of bytes: how many differ, and the first ranges that do, with offsets from 0 in hexadecimal. `recovered` is a file.
DifferencesFound ofBytes(const QString& path, const QString& recovered, const std::atomic<bool>& cancelled);

}  // namespace Comparisons
