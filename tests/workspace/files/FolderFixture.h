#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

/// A folder with files and folders for one test, deleted with it.
class FolderFixture : public testing::Test {
 protected:
    QString root() const { return m_folder.path(); }
    QString in(const QString& name) const { return m_folder.filePath(name); }

    QString makeFile(const QString& name, const QByteArray& bytes = {}) const {
        QFile file(in(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    QString makeFolder(const QString& name) const {
        EXPECT_TRUE(QDir().mkpath(in(name)));
        return in(name);
    }
    QString makeLink(const QString& name, const QString& target) const {
        EXPECT_TRUE(QFile::link(target, in(name)));
        return in(name);
    }
    QString makePipe(const QString& name) const {
        EXPECT_EQ(::mkfifo(in(name).toUtf8().constData(), 0600), 0);
        return in(name);
    }
    /// Seconds since the start of 1970.
    void setWritten(const QString& name, time_t seconds) const {
        const timespec times[] = {{seconds, 0}, {seconds, 0}};
        EXPECT_EQ(::utimensat(AT_FDCWD, in(name).toUtf8().constData(), times, 0), 0);
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

 private:
    QTemporaryDir m_folder;
};
