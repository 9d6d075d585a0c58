#include "platform/FileReader.h"
#include "support/FailingFileSystem.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace {

class FileReading : public testing::Test {
 protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }

    QString file(const QByteArray& bytes) {
        QFile out(at(u"file"_qs));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        return out.fileName();
    }

    std::string readAll(FileReader& reader, qint64 partSize) {
        std::string bytes;
        std::string part(static_cast<std::size_t>(partSize), '\0');
        for (;;) {
            const qint64 count = reader.read(part.data(), partSize);
            if (count > 0)
                bytes.append(part, 0, static_cast<std::size_t>(count));
            if (count < partSize)
                return bytes;
        }
    }

    void expectRefused(const QString& path, int number, const QString& reason) {
        FileReader reader(m_calls);
        const SystemError error = reader.open(path);
        EXPECT_EQ(error.number, number);
        EXPECT_TRUE(error.description.contains(path)) << error.description.toStdString();
        EXPECT_TRUE(error.description.contains(reason)) << error.description.toStdString();
        char byte = 0;
        EXPECT_EQ(reader.read(&byte, 1), -1);
    }

    QTemporaryDir m_folder;
    FailingFileSystem m_calls;
};

QString reasonOf(int number) {
    return SystemError::fromErrno(number).description;
}

}  // namespace

TEST_F(FileReading, GivesAllBytesInPartsOfAnySize) {
    const QString path = file("0123456789");
    for (const qint64 size : {1, 3, 5, 10, 11, 1000}) {
        FileReader reader;
        ASSERT_FALSE(reader.open(path));
        EXPECT_EQ(reader.size(), 10);
        EXPECT_EQ(readAll(reader, size), "0123456789");
        EXPECT_FALSE(reader.error());
    }
}

TEST_F(FileReading, AnEmptyFileEndsAtOnce) {
    FileReader reader;
    ASSERT_FALSE(reader.open(file("")));
    char byte = 0;
    EXPECT_EQ(reader.read(&byte, 1), 0);
}

TEST_F(FileReading, ShortAndInterruptedReadsAreGoneOnWith) {
    m_calls.shortenAll(3);
    for (const int number : {1, 2, 3})
        m_calls.fail(SystemCall::Read, number, EINTR);
    m_calls.fail(SystemCall::Open, 1, EINTR);
    FileReader reader(m_calls);
    ASSERT_FALSE(reader.open(file("0123456789")));
    EXPECT_EQ(readAll(reader, 8), "0123456789");
}

TEST_F(FileReading, AFileThatShrinksEndsEarly) {
    const QString path = file("0123456789");
    FileReader reader;
    ASSERT_FALSE(reader.open(path));
    char bytes[10];
    ASSERT_EQ(reader.read(bytes, 4), 4);
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 6), 0);
    EXPECT_EQ(reader.read(bytes, 10), 2);
    EXPECT_FALSE(reader.error());
}

TEST_F(FileReading, AFileThatGrowsGivesMoreThanItsSize) {
    const QString path = file("0123");
    FileReader reader;
    ASSERT_FALSE(reader.open(path));
    QFile more(path);
    ASSERT_TRUE(more.open(QFile::Append) && more.write("456") == 3);
    more.close();
    EXPECT_EQ(reader.size(), 4);
    EXPECT_EQ(readAll(reader, 5), "0123456");
}

TEST_F(FileReading, AFileOfTheSystemThatClaimsToBeEmptyIsReadToItsEnd) {
    FileReader reader;
    ASSERT_FALSE(reader.open(u"/proc/self/status"_qs));
    EXPECT_EQ(reader.size(), 0);
    EXPECT_NE(readAll(reader, 100).find("Name:"), std::string::npos);
}

TEST_F(FileReading, WhatIsNotThereIsTold) {
    expectRefused(at(u"none"_qs), ENOENT, reasonOf(ENOENT));
    expectRefused(at(u"none/file"_qs), ENOENT, reasonOf(ENOENT));
    expectRefused(file("") + u"/x"_qs, ENOTDIR, reasonOf(ENOTDIR));
    expectRefused(QString(), ENOENT, reasonOf(ENOENT));
    expectRefused(at(u"x"_qs) + QChar(0xD800), ENOENT, reasonOf(ENOENT));
    expectRefused(at(QString(300, u'x')), ENAMETOOLONG, reasonOf(ENAMETOOLONG));
    expectRefused(at(QString(100'000, u'x')), ENAMETOOLONG, reasonOf(ENAMETOOLONG));
}

TEST_F(FileReading, FoldersPipesSocketsAndDevicesAreNotEvenOpened) {
    ASSERT_EQ(::mkfifo(at(u"pipe"_qs).toUtf8().constData(), 0600), 0);
    const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, at(u"socket"_qs).toUtf8().constData(), sizeof address.sun_path);
    ASSERT_EQ(::bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    expectRefused(m_folder.path(), EISDIR, reasonOf(EISDIR));
    expectRefused(at(u"pipe"_qs), EINVAL, u"not a regular file"_qs);
    expectRefused(at(u"socket"_qs), EINVAL, u"not a regular file"_qs);
    expectRefused(u"/dev/zero"_qs, EINVAL, u"not a regular file"_qs);
    EXPECT_EQ(m_calls.count(SystemCall::Open), 0);
    ::close(handle);
}

TEST_F(FileReading, EveryFailingCallIsTold) {
    const QString path = file("0123456789");
    for (const SystemCall call : {SystemCall::Stat, SystemCall::Open, SystemCall::Fstat, SystemCall::Read}) {
        for (const int error : {EIO, EACCES, ENOENT, ESTALE, EAGAIN}) {
            FailingFileSystem calls;
            calls.fail(call, 1, error);
            {
                FileReader reader(calls);
                char bytes[4];
                const bool failed = reader.open(path) || reader.read(bytes, 4) < 0;
                EXPECT_TRUE(failed);
                EXPECT_EQ(reader.error().number, error);
                EXPECT_TRUE(reader.error().description.contains(reasonOf(error)));
                EXPECT_TRUE(reader.error().description.contains(path));
                EXPECT_EQ(reader.read(bytes, 4), -1);
            }
            EXPECT_TRUE(calls.allClosed());
        }
    }
}
