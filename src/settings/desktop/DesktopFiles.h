#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// Reading and writing of the small files of the desktop, which other programs write too. They are replaced whole: a
/// reader finds the old file or the new one. Links are followed, so that a link stays one. Failures have no message.
namespace DesktopFiles {

/// The content of a regular file of at most 16 MB. Empty bytes when there is no such file; nothing when it exists and
/// cannot be read whole.
std::optional<QByteArray> read(const QString& path);

/// Replaces the file, and creates it and its folder when they are missing. A file without any write bit is refused,
/// also for root. False: the file is unchanged.
bool replace(const QString& path, const QByteArray& bytes);

/// Lets everybody who may read the file start it. Some desktops require that of an entry that is not in a menu.
void makeExecutable(const QString& path);

/// Runs a program of the system, if it is installed, and waits until it has ended, at most five seconds. Its output is
/// dropped. It does not run the event loop.
void runTool(const QString& name, const QStringList& arguments);

}  // namespace DesktopFiles
