#pragma once

#include <QString>
#include <QStringList>

/// Where the desktop keeps what it knows of programs and file types, as absolute paths. Plain data; no folder needs to
/// exist.
struct DesktopFolders {
    QString program;            ///< the executable that the desktop starts
    QString applications;       ///< the user's desktop entries
    QString mime;               ///< the user's file types; the packages that describe them are in `packages` below it
    QString mimeAppsList;       ///< the file in which the user's programs for each file type are chosen
    QString autostart;          ///< desktop entries that are started with the session
    QString desktop;            ///< the files on the desktop's background
    QStringList sharedFolders;  ///< folders of other installed data, each with an `applications` of its own

    /// The folders of this user, read from the environment at each call; the program is the running executable.
    static DesktopFolders ofUser();

    QString mimePackages() const { return mime + u"/packages"_qs; }
};
