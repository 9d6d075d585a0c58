#include "platform/FileType.h"
#include "support/AnotherUser.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class TypesOfFiles : public testing::Test {
 protected:
    QString file(const QByteArray& bytes) {
        QString path = m_folder.filePath(u"file"_qs);
        QFile out(path);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_EQ(out.write(bytes), bytes.size());
        return path;
    }
    bool isBinary(const QByteArray& bytes) { return IsBinaryFile(file(bytes)); }

    QTemporaryDir m_folder;
};

QByteArray padded(const QByteArray& start) {
    return start.leftJustified(FileHeadSize, ' ');
}

}  // namespace

TEST_F(TypesOfFiles, ExactlyFourByteValuesMakeAFileBinary) {
    for (int value = 0; value < 256; ++value) {
        const bool expected = value == 255 || (value >= 1 && value <= 3);
        EXPECT_EQ(isBinary("text" + QByteArray(1, static_cast<char>(value)) + "text"), expected) << value;
    }
}

TEST_F(TypesOfFiles, AnEmptyFileIsNotBinary) {
    EXPECT_FALSE(isBinary(QByteArray()));
}

TEST_F(TypesOfFiles, ThreeHundredBytesAreLookedAt) {
    EXPECT_TRUE(isBinary(QByteArray(299, 'x') + '\x03'));
    EXPECT_FALSE(isBinary(QByteArray(300, 'x') + '\x03'));
    EXPECT_FALSE(isBinary(QByteArray(300, 'x') + QByteArray(1000, '\xFF')));
}

TEST_F(TypesOfFiles, MarksOfEncodingsCountByTheirBytes) {
    EXPECT_TRUE(
        isBinary(QByteArray("\xFF\xFE"
                            "a\0b\0",
                            6)));
    EXPECT_TRUE(isBinary(QByteArray("\xFE\xFF\0a", 4)));
    EXPECT_FALSE(isBinary(QByteArray("a\0b\0", 4)));
    EXPECT_FALSE(
        isBinary("\xEF\xBB\xBF"
                 "text"));
}

TEST_F(TypesOfFiles, WhatIsNotThereIsNotBinary) {
    EXPECT_FALSE(IsBinaryFile(QString()));
    EXPECT_FALSE(IsBinaryFile(m_folder.filePath(u"none"_qs)));
    const QString path = file("\x01");
    EXPECT_FALSE(IsBinaryFile(path + QChar(QChar::Null)));
    ASSERT_TRUE(QFile::copy(path, m_folder.filePath(u"?"_qs)));
    ASSERT_TRUE(QFile::copy(path, m_folder.filePath(u"\uFFFD"_qs)));
    EXPECT_FALSE(IsBinaryFile(m_folder.filePath(QString(QChar(0xDCFF)))));
    EXPECT_FALSE(IsBinaryFile(path + u"/below"_qs));
}

TEST_F(TypesOfFiles, ALinkToAFileIsLookedThrough) {
    const QString link = m_folder.filePath(u"link"_qs);
    ASSERT_TRUE(QFile::link(file("\x01"), link));
    EXPECT_TRUE(IsBinaryFile(link));
    const QString dangling = m_folder.filePath(u"dangling"_qs);
    ASSERT_TRUE(QFile::link(m_folder.filePath(u"none"_qs), dangling));
    EXPECT_FALSE(IsBinaryFile(dangling));
}

TEST_F(TypesOfFiles, OnlyRegularFilesAreOpened) {
    EXPECT_FALSE(IsBinaryFile(m_folder.path()));
    EXPECT_FALSE(IsBinaryFile(u"/dev/zero"_qs));
    EXPECT_FALSE(IsBinaryFile(u"/dev/urandom"_qs));
    const QString fifo = m_folder.filePath(u"fifo"_qs);
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_FALSE(IsBinaryFile(fifo));
    const QString link = m_folder.filePath(u"link"_qs);
    ASSERT_TRUE(QFile::link(fifo, link));
    EXPECT_FALSE(IsBinaryFile(link));
}

TEST_F(TypesOfFiles, AFileThatCannotBeReadIsNotBinary) {
    const QString path = file("\x01");
    EXPECT_TRUE(IsBinaryFile(path));
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0), 0);
    EXPECT_TRUE(asSomebodyElse([&] { return !IsBinaryFile(path); }));
}

TEST(FileTypeName, EveryRowHasItsName) {
    const std::pair<QByteArray, const char*> cases[] = {
        {"MZ", "PE Executable"},
        {"ZM", "PE Executable"},
        {"[section]", "INI File"},
        {"RIFF1234AVI LIST", "AVI Movie File"},
        {"RIFF1234WAVE", "WAV Audio File"},
        {"\xD0\xCF\x11\xE0", "Microsoft Word Document"},
        {QByteArray("\0\x01\0\0Standard Jet DB", 19), "Microsoft Access Database"},
        {"GIF87a", "GIF Image File"},
        {"text GIF89 text", "GIF Image File"},
        {QByteArray("\xFF\xFB\x90\x44\0", 5), "MP3 Audio File"},
        {"BM", "BMP (Bitmap) Image File"},
        {"II*", "TIFF Image File"},
        {"PK", "ZIP Archive File"},
        {"text <HTML>", "HTML Document File"},
        {"<!DocType html>", "HTML Document File"},
        {"Rar!", "RAR Archive File"},
        {"\x60\xEA", "ARJ Archive File"},
        {"\xFF\xD8\xFF\xE1x", "JPEG Image File"},
        {"Type=Exe\r\nReference=*", "Visual Basic Project File"},
        {"VBGROUP 5.0", "Visual Basic Group Project File"},
        {"VERSION 5.00\r\nBegin VB.Form", "Visual Basic Form File"},
        {"text\x02", "Unknown binary file"},
        {"text", "Unknown text file"},
    };
    for (const auto& [start, name] : cases) {
        EXPECT_EQ(fileTypeName(padded(start)), QLatin1String(name)) << start.constData();
    }
}

TEST(FileTypeName, ComparisonsAreExactButWhereCaseIsFree) {
    for (const char* start : {"mz", "riff", "gif", "bm", "pk", "vbgroup 5", "Xtype=reference=", "version 5\nBegin"}) {
        EXPECT_EQ(fileTypeName(padded(start)), u"Unknown text file"_qs) << start;
    }
    EXPECT_EQ(fileTypeName(padded("rAr")), u"RAR Archive File"_qs);
}

TEST(FileTypeName, TheFirstRowThatMatchesWins) {
    EXPECT_EQ(fileTypeName(padded("MZ GIF89")), u"PE Executable"_qs);
    EXPECT_EQ(fileTypeName(padded("[<html>]")), u"INI File"_qs);
    EXPECT_EQ(fileTypeName(padded("BM GIF89")), u"GIF Image File"_qs);
    EXPECT_EQ(fileTypeName(padded(QByteArray("\xFF\xD8\xFF\xE0\0\x10JFIF", 10))), u"MP3 Audio File"_qs);
    EXPECT_EQ(fileTypeName(padded("PK <html>")), u"ZIP Archive File"_qs);
}

TEST(FileTypeName, PlacesCountExactly) {
    EXPECT_EQ(fileTypeName(padded(" MZ")), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(padded("1234567AVI LIST")), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(padded("123Standard Jet DB")), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(padded("[" + QByteArray(98, 'x') + "]")), u"INI File"_qs);
    EXPECT_EQ(fileTypeName(padded("[" + QByteArray(99, 'x') + "]")), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(padded("VERSION 5.00 Begin")), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(padded("Type= alone")), u"Unknown text file"_qs);
}

TEST(FileTypeName, AShortHeadIsFilledWithZerosAndALongOneCut) {
    EXPECT_EQ(fileTypeName(QByteArray()), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName("\xFF"), u"MP3 Audio File"_qs);
    EXPECT_EQ(fileTypeName(QByteArray(299, 'x') + '\x01'), u"Unknown binary file"_qs);
    EXPECT_EQ(fileTypeName(QByteArray(300, 'x') + '\x01'), u"Unknown text file"_qs);
    EXPECT_EQ(fileTypeName(QByteArray(295, 'x') + "GIF89"), u"GIF Image File"_qs);
    EXPECT_EQ(fileTypeName(QByteArray(296, 'x') + "GIF89"), u"Unknown text file"_qs);
}
