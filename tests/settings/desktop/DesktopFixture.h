#pragma once

#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/MemoryRegistry.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A user's folders without anything in them, and the integration over them. The program is an empty file that can be
/// started.
class DesktopFixture : public testing::Test {
 protected:
    DesktopFixture() {
        put(folders.program, "");
        QFile::setPermissions(folders.program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString path(const QString& relative) const { return home.filePath(relative); }
    static void put(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray list() const { return bytesOf(folders.mimeAppsList); }
    QByteArray entry() const { return bytesOf(entryPath()); }
    QString entryPath() const { return folders.applications + u"/Quillmark.desktop"_qs; }

    /// All files of the home with their bytes; of a link, what it points to.
    QMap<QString, QByteArray> files() const {
        QMap<QString, QByteArray> found;
        QDirIterator walk(home.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QFileInfo file(walk.next());
            if (file.isSymLink())
                found.insert(file.filePath(), "link to " + QFile::encodeName(file.symLinkTarget()));
            else if (file.isFile())
                found.insert(file.filePath(), bytesOf(file.filePath()));
        }
        return found;
    }

    /// What a program of the system prints, with these folders as the user's.
    QString run(const QString& program, const QStringList& arguments, int expected = 0) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_qs, home.path());
        environment.insert(u"XDG_CONFIG_HOME"_qs, path(u"config"_qs));
        environment.insert(u"XDG_DATA_HOME"_qs, path(u"data"_qs));
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "DE"})
            environment.remove(QString::fromLatin1(name));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
        EXPECT_EQ(process.exitCode(), expected) << program.toStdString();
        return QString::fromUtf8(process.readAll()).trimmed();
    }
    QString defaultOf(const QString& type) const { return run(u"xdg-mime"_qs, {u"query"_qs, u"default"_qs, type}); }

    QTemporaryDir home;
    DesktopFolders folders{
        .program = path(u"opt/bin/quillmark"_qs),
        .applications = path(u"data/applications"_qs),
        .mime = path(u"data/mime"_qs),
        .mimeAppsList = path(u"config/mimeapps.list"_qs),
        .autostart = path(u"config/autostart"_qs),
        .desktop = path(u"Desktop"_qs),
        .sharedFolders = {path(u"shared"_qs)},
    };
    MemoryRegistry store;
    QStringList messages;
    ShellIntegration desktop{store, [this](const QString& text) { messages << text; }, folders};
};
