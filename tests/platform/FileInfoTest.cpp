#include "platform/FileInfo.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <ctime>

namespace {

class FileInfoOf : public testing::Test {
 protected:
    void SetUp() override {
        m_zone = qgetenv("TZ");
        useZone("UTC");
    }
    void TearDown() override { useZone(m_zone); }

    static void useZone(const QByteArray& zone) {
        if (zone.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", zone);
        ::tzset();
    }

    QString file(const QByteArray& bytes, std::time_t modified, std::time_t accessed = 0) {
        const QString path = m_folder.filePath(u"file"_qs);
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        out.close();
        setTimes(path, modified, accessed);
        return path;
    }

    static void setTimes(const QString& path, std::time_t modified, std::time_t accessed) {
        const timespec times[] = {{accessed, 0}, {modified, 999'999'999}};
        EXPECT_EQ(::utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
    }

    static void expectNothing(const FileInfo& info) {
        EXPECT_EQ(info.created, u"01/1/1601 12:00:00 AM"_qs);
        EXPECT_EQ(info.modified, u"1601/01/01 00:00:00"_qs);
        EXPECT_EQ(info.accessed, u"01/1/1601"_qs);
        EXPECT_EQ(info.size, 0);
    }

    QTemporaryDir m_folder;

 private:
    QByteArray m_zone;
};

constexpr std::time_t March5 = 1709615106;  // 2024-03-05 05:05:06 UTC

}  // namespace

TEST_F(FileInfoOf, GivesTheTimesInTheirForms) {
    const FileInfo info = GetFileInfo(file("12345", March5, March5 + 86400 * 10));
    EXPECT_EQ(info.modified, u"2024/03/05 05:05:06"_qs);
    EXPECT_EQ(info.accessed, u"03/15/2024"_qs);
    EXPECT_EQ(info.size, 5);
}

TEST_F(FileInfoOf, GivesTheTimeOfCreationWithTwelveHours) {
    const std::time_t before = std::time(nullptr);
    const QString text = GetFileInfo(file("", March5)).created;
    const std::time_t after = std::time(nullptr);
    const auto expected = [](std::time_t time) {
        char form[64];
        std::tm local{};
        ::localtime_r(&time, &local);
        std::snprintf(form, sizeof form, "%02d/%d/%04d %02d:%02d:%02d %s", local.tm_mon + 1, local.tm_mday,
                      local.tm_year + 1900, local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12, local.tm_min,
                      local.tm_sec, local.tm_hour < 12 ? "AM" : "PM");
        return QString::fromLatin1(form);
    };
    bool found = false;
    for (std::time_t time = before - 1; time <= after; ++time)
        found = found || text == expected(time);
    EXPECT_TRUE(found) << text.toStdString();
}

TEST_F(FileInfoOf, TellsLocalTime) {
    const QString path = file("", March5, March5);
    useZone("XXX+7");
    EXPECT_EQ(GetFileInfo(path).modified, u"2024/03/04 22:05:06"_qs);
    EXPECT_EQ(GetFileInfo(path).accessed, u"03/4/2024"_qs);
}

TEST_F(FileInfoOf, IsTheSameInEveryLocale) {
    const QString path = file("", March5);
    for (const char* locale : {"C", "C.UTF-8", "de_DE.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(GetFileInfo(path).modified, u"2024/03/05 05:05:06"_qs);
    }
    std::setlocale(LC_ALL, "C.UTF-8");
}

TEST_F(FileInfoOf, ATimeOfZeroSecondsIsNoMissingFile) {
    EXPECT_EQ(GetFileInfo(file("", 0)).modified, u"1970/01/01 00:00:00"_qs);
}

TEST_F(FileInfoOf, CountsSizesAboveFourGigabytes) {
    const QString path = file("", March5);
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 5'000'000'000), 0);
    EXPECT_EQ(GetFileInfo(path).size, 5'000'000'000);
}

TEST_F(FileInfoOf, WhatCannotBeReadHasTheZeroTime) {
    expectNothing(GetFileInfo(m_folder.filePath(u"none"_qs)));
    expectNothing(GetFileInfo(m_folder.path()));
    expectNothing(GetFileInfo(QString()));
    expectNothing(GetFileInfo(u"/tmp/"_qs + QChar(0xD800)));
}

TEST_F(FileInfoOf, APipeIsLookedAtAndNotOpened) {
    const QString path = m_folder.filePath(u"pipe"_qs);
    ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0);
    setTimes(path, March5, 0);
    EXPECT_EQ(GetFileInfo(path).modified, u"2024/03/05 05:05:06"_qs);
    EXPECT_EQ(GetFileInfo(path).size, 0);
}

TEST_F(FileInfoOf, FollowsALink) {
    const QString link = m_folder.filePath(u"link"_qs);
    file("123", March5);
    ASSERT_EQ(::symlink("file", link.toUtf8().constData()), 0);
    EXPECT_EQ(GetFileInfo(link).size, 3);
    EXPECT_EQ(GetFileInfo(link).modified, u"2024/03/05 05:05:06"_qs);
}
