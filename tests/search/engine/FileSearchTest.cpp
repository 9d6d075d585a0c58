#include "platform/WriteWitness.h"
#include "search/engine/FileSearch.h"
#include "text/codec/TextCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <tuple>

namespace {

/// Files are read and decoded in parts of so many bytes.
constexpr std::size_t Part = 4UL * 1024 * 1024;

constexpr TextFormat Formats[] = {{TextEncoding::Utf8, false},
                                  {TextEncoding::Utf8, true},
                                  {TextEncoding::Utf16LittleEndian, true},
                                  {TextEncoding::Utf16BigEndian, true},
                                  {TextEncoding::Windows1252, false}};

std::string encoded(std::string_view utf8, TextFormat format) {
    const std::array text{utf8};
    const EncodedText result = encodeText(text, format);
    EXPECT_FALSE(result.failure);
    std::string bytes;
    for (const std::string_view piece : result.pieces)
        bytes += piece;
    return bytes;
}

SearchRequest finding(const QString& text, SearchFlags flags = {.caseSensitive = true}) {
    SearchRequest request;
    request.text = text;
    request.flags = flags;
    return request;
}

SearchRequest replacing(const QString& text, const QString& replacement, SearchFlags flags = {.caseSensitive = true}) {
    SearchRequest request = finding(text, flags);
    request.replaces = true;
    request.replacement = replacement;
    return request;
}

constexpr SearchFlags Expression{.caseSensitive = true, .regExp = true};

class FileSearchTest : public testing::Test {
 protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, std::string_view bytes) const {
        QFile file(at(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
        return at(name);
    }
    FileFinding inFile(const SearchRequest& request, const QString& path) {
        return FileSearch(request, m_cancelled, m_largeFiles).search(path);
    }
    FileFinding inBytes(const SearchRequest& request, std::string_view bytes) {
        return FileSearch(request, m_cancelled, m_largeFiles).searchBytes(bytes);
    }
    std::string replaced(const SearchRequest& request, std::string_view bytes) {
        const FileFinding found = inBytes(request, bytes);
        return found.matches.empty() ? std::string(bytes) : encoded(found.newText, found.format);
    }

    QTemporaryDir m_folder;
    std::atomic<bool> m_cancelled = false;
    LargeFiles m_largeFiles;
};

using Row = std::tuple<qint64, qint64, int, int>;

/// Start, line from 1, column and length of each match.
std::vector<Row> rowsOf(const FileFinding& found) {
    std::vector<Row> rows;
    for (const FileMatches::Match& match : found.matches.matches())
        rows.emplace_back(match.start, found.matches.lineNumber(match), match.column, match.length);
    return rows;
}

// Files

TEST_F(FileSearchTest, AFileIsFoundInWithItsLines) {
    const FileFinding found = inFile(finding(u"two"_qs), write(u"a"_qs, "one\r\ntwo two\n\xC3\xA4\xF0\x9F\x98\x80two"));
    EXPECT_TRUE(found.loaded);
    EXPECT_EQ(rowsOf(found), (std::vector<Row>{{5, 2, 0, 3}, {9, 2, 4, 3}, {16, 3, 3, 3}}));
    ASSERT_EQ(found.matches.matches().size(), 3U);
    EXPECT_EQ(found.matches.lineText(found.matches.matches()[1]), u"two two"_qs);
    EXPECT_EQ(found.matches.matches()[0].line, found.matches.matches()[1].line);
}

TEST_F(FileSearchTest, WhatIsNoReadableFileIsNotLoaded) {
    ASSERT_TRUE(QDir().mkdir(at(u"folder"_qs)));
    ASSERT_EQ(::mkfifo(QFile::encodeName(at(u"fifo"_qs)).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(at(u"missing"_qs), at(u"broken"_qs)));
    ASSERT_TRUE(QFile::link(at(u"circle"_qs), at(u"circle"_qs)));
    for (const char16_t* name : {u"missing", u"folder", u"fifo", u"broken", u"circle", u"fifo/in"}) {
        const FileFinding found = inFile(finding(u"a"_qs), at(QStringView(name).toString()));
        EXPECT_FALSE(found.loaded) << QStringView(name).toString().toStdString();
        EXPECT_FALSE(found.cancelled);
        EXPECT_TRUE(found.matches.empty());
    }
    EXPECT_FALSE(inFile(finding(u"a"_qs), {}).loaded);
    // A file that may be opened and fails when it is read.
    EXPECT_FALSE(inFile(finding(u"a"_qs), u"/proc/self/mem"_qs).loaded);
}

TEST_F(FileSearchTest, AnEmptyFileIsLoadedAndHasNoMatchEvenOfNothing) {
    const QString empty = write(u"empty"_qs, {});
    for (const SearchRequest& request :
         {finding(u"a"_qs), finding(u"^"_qs, Expression), replacing(u"$"_qs, u"x"_qs, Expression)}) {
        const FileFinding found = inFile(request, empty);
        EXPECT_TRUE(found.loaded);
        EXPECT_TRUE(found.matches.empty());
    }
    EXPECT_TRUE(inBytes(finding(u"^"_qs, Expression), "\xEF\xBB\xBF").matches.empty()) << "a mark is no text";
}

TEST_F(FileSearchTest, AFileThatIsLongerThanItsSizeIsReadToItsEnd) {
    // The system gives its own files the size 0.
    const FileFinding found = inFile(finding(u"[stack]"_qs), u"/proc/self/maps"_qs);
    EXPECT_TRUE(found.loaded);
    EXPECT_EQ(found.matches.matches().size(), 1U);
}

TEST_F(FileSearchTest, AFileAboveTheLimitIsNotLoaded) {
    QFile file(write(u"huge"_qs, "a"));
    ASSERT_TRUE(file.resize(FileSearch::SizeLimit + 1));
    EXPECT_FALSE(inFile(finding(u"a"_qs), file.fileName()).loaded);
}

TEST_F(FileSearchTest, OneSearchTakesManyFilesOneAfterAnother) {
    FileSearch search(finding(u"\u00e4b"_qs), m_cancelled, m_largeFiles);
    const std::string filler(Part * 5, 'x');
    for (const TextFormat format : Formats) {
        EXPECT_EQ(search
                      .search(write(u"a"_qs, encoded("\xC3\xA4"
                                                     "b",
                                                     format)))
                      .matches.matches()
                      .size(),
                  1U);
        EXPECT_EQ(search
                      .search(write(u"b"_qs, encoded(filler + "\xC3\xA4"
                                                              "b\xC3\xA4"
                                                              "b",
                                                     format)))
                      .matches.matches()
                      .size(),
                  2U);
        EXPECT_FALSE(search.search(at(u"missing"_qs)).loaded);
        EXPECT_EQ(search.search(write(u"c"_qs, encoded("ab", format))).matches.matches().size(), 0U);
    }
}

TEST_F(FileSearchTest, TheStateIsThatOfTheFileBeforeItWasRead) {
    const QString path = write(u"a"_qs, "a");
    const FileFinding found = inFile(replacing(u"a"_qs, u"b"_qs), path);
    ASSERT_TRUE(found.state);
    EXPECT_EQ(found.state, FileState::of(path));
    write(u"a"_qs, "longer");
    EXPECT_NE(found.state, FileState::of(path));
    EXPECT_FALSE(FileState::of(at(u"missing"_qs)));
    EXPECT_FALSE(FileState::of(-1));
    ASSERT_TRUE(QFile::link(path, at(u"link"_qs)));
    EXPECT_EQ(FileState::of(at(u"link"_qs)), FileState::of(path));
}

// The end of a search

TEST_F(FileSearchTest, ASearchThatWasCancelledBeforeFindsNothing) {
    m_cancelled = true;
    const QString path = write(u"a"_qs, "a a");
    for (const SearchRequest& request : {finding(u"a"_qs), replacing(u"a"_qs, u"b"_qs)}) {
        const FileFinding found = inFile(request, path);
        EXPECT_TRUE(found.cancelled);
        EXPECT_TRUE(found.newText.empty());
        EXPECT_TRUE(inBytes(request, "b b").cancelled);
    }
}

TEST_F(FileSearchTest, ASearchIsCancelledInTheMiddleOfABigFile) {
    QFile file(write(u"big"_qs, "a"));
    ASSERT_TRUE(file.resize(1536LL * 1024 * 1024));
    for (const SearchRequest& request :
         {finding(u"needle"_qs), finding(u"\u00e4"_qs), replacing(u"needle"_qs, u"b"_qs)}) {
        m_cancelled = false;
        std::thread canceller([this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            m_cancelled = true;
        });
        const FileFinding found = inFile(request, file.fileName());
        canceller.join();
        EXPECT_TRUE(found.cancelled);
        EXPECT_TRUE(found.matches.empty());
    }
}

TEST_F(FileSearchTest, AnInvalidExpressionIsAnErrorAndNoMatch) {
    for (const char16_t* expression : {u"(", u"a**", u"[", u"\\"}) {
        const FileFinding found = inBytes(finding(QStringView(expression).toString(), Expression), "some ( text");
        EXPECT_FALSE(found.error.isEmpty()) << QStringView(expression).toString().toStdString();
        EXPECT_TRUE(found.loaded);
        EXPECT_TRUE(found.matches.empty());
    }
    EXPECT_TRUE(inBytes(finding(u"("_qs), "some ( text").error.isEmpty());
}

TEST_F(FileSearchTest, AnExpressionThatTakesTooLongGivesUpAndKeepsWhatItHasFound) {
    const std::string text = "aX\n" + std::string(40, 'a') + "b";
    const FileFinding found = inBytes(finding(u"aX|(a+)+(?=c)(*COMMIT)c"_qs, Expression), text);
    EXPECT_TRUE(found.gaveUp);
    EXPECT_FALSE(found.cancelled);
    EXPECT_EQ(rowsOf(found), (std::vector<Row>{{0, 1, 0, 2}}));
}

// Encodings

TEST_F(FileSearchTest, EveryEncodingIsSearchedAndReplacedIn) {
    const std::string text = "one K\xC3\xA4se\r\ntwo k\xC3\x84SE \xE2\x82\xAC\n";
    for (const TextFormat format : Formats) {
        const std::string bytes = encoded(text, format);
        const FileFinding found = inFile(finding(u"k\u00e4se"_qs, {}), write(u"a"_qs, bytes));
        EXPECT_EQ(rowsOf(found), (std::vector<Row>{{4, 1, 4, 4}, {14, 2, 4, 4}}));
        EXPECT_EQ(replaced(replacing(u"k\u00e4se"_qs, u"Br\u00f6t"_qs, {}), bytes),
                  encoded("one Br\xC3\xB6t\r\ntwo Br\xC3\xB6t \xE2\x82\xAC\n", format));
        EXPECT_EQ(inBytes(replacing(u"one"_qs, u"x"_qs), bytes).format, format);
    }
}

TEST_F(FileSearchTest, ACharacterThatTheEncodingCannotHoldIsSeenWhenTheTextIsEncoded) {
    const FileFinding found = inBytes(replacing(u"a"_qs, u"\u03a9"_qs), "\xE4 a");
    EXPECT_EQ(found.format.encoding, TextEncoding::Windows1252);
    EXPECT_EQ(found.newText, "\xC3\xA4 \xCE\xA9");
    const std::array text{std::string_view(found.newText)};
    const EncodedText result = encodeText(text, found.format);
    ASSERT_TRUE(result.failure);
    EXPECT_EQ(result.failure->column, 3);
}

/// In bytes of any kind an ASCII text is replaced as in the bytes themselves.
TEST_F(FileSearchTest, BytesOutsideOfMatchesDoNotChange) {
    std::mt19937 random(3);
    for (int round = 0; round < 4000; ++round) {
        std::string bytes;
        for (auto left = random() % 60; left > 0; --left) {
            if (random() % 3 == 0)
                bytes += "ab";
            else
                bytes += static_cast<char>(round % 2 == 0 ? random() : random() % 128);
        }
        if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
            continue;
        std::string wanted = bytes;
        for (std::size_t at = 0; (at = wanted.find("ab", at)) != std::string::npos; at += 3)
            wanted.replace(at, 2, "x-b");
        ASSERT_EQ(replaced(replacing(u"ab"_qs, u"x-b"_qs), bytes), wanted) << testing::PrintToString(bytes);
    }
}

TEST_F(FileSearchTest, MatchesAndCharactersAcrossThePartsThatAreReadAreFound) {
    const std::string_view needle = "n\xC3\xA4\xE2\x82\xACn";
    for (const TextFormat format : Formats) {
        const std::size_t perCharacter =
            format.encoding == TextEncoding::Utf8 || format.encoding == TextEncoding::Windows1252 ? 1 : 2;
        for (std::size_t back = 0; back < 8; ++back) {
            std::string text((Part - back) / perCharacter, '\n');
            const auto start = static_cast<qint64>(text.size());
            text += needle;
            text += "z";
            const std::string bytes = encoded(text, format);
            EXPECT_EQ(rowsOf(inBytes(finding(u"n\u00e4\u20acn"_qs), bytes)),
                      (std::vector<Row>{{start, start + 1, 0, 4}}))
                << back;
            EXPECT_EQ(rowsOf(inBytes(finding(u"N\u00c4."_qs, {.regExp = true}), bytes)),
                      (std::vector<Row>{{start, start + 1, 0, 3}}))
                << back;
        }
    }
}

TEST_F(FileSearchTest, PairsOfSurrogatesAcrossThePartsThatAreReadAreWhole) {
    const QString face = QString::fromUcs4(U"\U0001F600");
    for (const TextFormat format : {Formats[0], Formats[1], Formats[2], Formats[3]}) {
        for (std::size_t back = 0; back < 8; ++back) {
            const std::string front((Part - back) / (format.encoding == TextEncoding::Utf8 ? 1 : 2), 'x');
            const std::string bytes = encoded(front + "\xF0\x9F\x98\x80y", format);
            const auto start = static_cast<qint64>(front.size());
            EXPECT_EQ(rowsOf(inBytes(finding(face), bytes)), (std::vector<Row>{{start, 1, static_cast<int>(start), 2}}))
                << back;
            ASSERT_TRUE(replaced(replacing(face, u"-"_qs), bytes) == encoded(front + "-y", format)) << back;
        }
    }
}

TEST_F(FileSearchTest, TheRequiredTextIsSeenAcrossTheParts) {
    for (std::size_t back = 0; back < 8; ++back) {
        const std::string bytes = std::string(Part - back, 'x') + "needle";
        EXPECT_EQ(inBytes(finding(u"needle"_qs), bytes).matches.matches().size(), 1U) << back;
        EXPECT_EQ(inBytes(finding(u"needle"_qs), std::string(Part, 'x') + bytes).matches.matches().size(), 1U) << back;
    }
    EXPECT_TRUE(inBytes(finding(u"needle"_qs), std::string(Part * 2, 'x')).matches.empty());
}

TEST_F(FileSearchTest, AWrongGuessOfTheEncodingIsCorrectedHoweverLateItIsSeen) {
    std::string bytes = "\xC3\xA4needle\n" + std::string(Part + 100, 'x') + "\xFFneedle";
    const FileFinding found = inBytes(finding(u"needle"_qs), bytes);
    const auto second = static_cast<qint64>(bytes.size()) - 6;
    EXPECT_EQ(rowsOf(found), (std::vector<Row>{{2, 1, 2, 6}, {second, 2, static_cast<int>(second) - 9, 6}}));
    const std::string wanted = "\xC3\xA4-\n" + std::string(Part + 100, 'x') + "\xFF-";
    EXPECT_TRUE(replaced(replacing(u"needle"_qs, u"-"_qs), bytes) == wanted);
}

TEST_F(FileSearchTest, FindingEndsAtTheMostMatchesAndReplacingLeavesTheFile) {
    const std::string most(FileSearch::MostMatches, 'a');
    const FileFinding found = inBytes(finding(u"a"_qs), most + "a");
    EXPECT_TRUE(found.tooMany);
    EXPECT_EQ(found.matches.matches().size(), FileSearch::MostMatches);
    EXPECT_FALSE(found.gaveUp);
    const FileFinding refused = inBytes(replacing(u"a"_qs, u"b"_qs), most + "a");
    EXPECT_FALSE(refused.error.isEmpty());
    EXPECT_TRUE(refused.matches.empty());
    EXPECT_TRUE(refused.newText.empty());
    EXPECT_TRUE(inBytes(replacing(u"a"_qs, u"b"_qs), most).error.isEmpty());
}

TEST_F(FileSearchTest, WhereverAReplacementIsCancelledItsTextIsWholeOrThereIsNone) {
    std::string lines;
    while (lines.size() < 6 * Part)
        lines += std::string(Part / 4, 'x') + "\n";
    const std::string bytes = lines + "\r\nneedle\rneedle\n" + lines;
    const std::string wanted = lines + "\r\n-\r-\n" + lines;
    const SearchRequest request = replacing(u"needle"_qs, u"-"_qs);
    for (int milliseconds = 0; milliseconds < 60; milliseconds += 3) {
        std::atomic<bool> cancelled = false;
        LargeFiles largeFiles;
        FileSearch search(request, cancelled, largeFiles);
        std::thread canceller([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
            cancelled = true;
        });
        const FileFinding found = search.searchBytes(bytes);
        canceller.join();
        if (found.cancelled) {
            EXPECT_TRUE(found.matches.empty());
            EXPECT_TRUE(found.newText.empty());
        } else {
            EXPECT_EQ(found.matches.matches().size(), 2U);
            EXPECT_TRUE(found.newText == wanted);
        }
    }
}

TEST_F(FileSearchTest, ALineIsLockedByItsLengthHoweverItStandsInTheParts) {
    const auto isLeft = [this](std::size_t before, std::size_t length) {
        const std::string bytes = "\r\n\r\n" + std::string(before, '\n') + "needle" + std::string(length - 6, 'x');
        return inBytes(replacing(u"needle"_qs, u"-"_qs), bytes + "\r").newText.empty();
    };
    const auto limit = static_cast<std::size_t>(FileSearch::LockedLine);
    for (const std::size_t before : {std::size_t(0), Part - 4, Part - 5, Part / 2, 2 * Part}) {
        EXPECT_TRUE(isLeft(before, limit)) << before;
        EXPECT_FALSE(isLeft(before, limit - 1)) << before;
    }
}

// Replacements

TEST_F(FileSearchTest, AFileWithoutAMatchHasNoNewText) {
    const FileFinding found = inBytes(replacing(u"z"_qs, u"y"_qs), "abc");
    EXPECT_TRUE(found.loaded);
    EXPECT_TRUE(found.matches.empty());
    EXPECT_TRUE(found.newText.empty());
}

TEST_F(FileSearchTest, AWholeTextMayBeReplacedByNothing) {
    const FileFinding found = inBytes(replacing(u"a"_qs, {}), "aaa");
    EXPECT_EQ(found.newText, "");
    EXPECT_EQ(rowsOf(found), (std::vector<Row>{{0, 1, 0, 0}, {0, 1, 0, 0}, {0, 1, 0, 0}}));
}

TEST_F(FileSearchTest, AReplacementIsListedWhereItStandsWithTheLengthOfItsLiteralText) {
    const FileFinding found = inBytes(replacing(u"(b)"_qs, u"$1$1"_qs, Expression), "ab\ncb b");
    EXPECT_EQ(found.newText, "abb\ncbb bb");
    EXPECT_EQ(rowsOf(found), (std::vector<Row>{{1, 1, 1, 4}, {5, 2, 1, 4}, {8, 2, 4, 4}}));
    EXPECT_EQ(found.matches.matches()[0].textLength, 2);
    EXPECT_EQ(found.matches.lineText(found.matches.matches()[1]), u"cbb bb"_qs);
}

TEST_F(FileSearchTest, EmptyMatchesAreFoundOnceAndReplaced) {
    EXPECT_EQ(rowsOf(inBytes(finding(u"x*"_qs, Expression), "axb")),
              (std::vector<Row>{{0, 1, 0, 0}, {1, 1, 1, 1}, {2, 1, 2, 0}, {3, 1, 3, 0}}));
    EXPECT_EQ(replaced(replacing(u"x*"_qs, u"-"_qs, Expression), "axb"), "-a--b-");
    EXPECT_EQ(replaced(replacing(u"^"_qs, u"> "_qs, Expression), "a\r\nb\rc"), "> a\r\n> b\r> c");
    EXPECT_EQ(replaced(replacing(u"$"_qs, u";"_qs, Expression), "a\r\nb\n"), "a;\r\nb;\n;");
}

TEST_F(FileSearchTest, TheHalvesOfACrLfAreReplacedTogether) {
    EXPECT_EQ(replaced(replacing(u"\\n"_qs, u"-"_qs, Expression), "a\r\nb"), "a-b");
    EXPECT_EQ(replaced(replacing(u"\\r"_qs, u"-"_qs, Expression), "a\r\nb"), "a-b");
    EXPECT_EQ(replaced(replacing(u"\\n"_qs, u"\\n"_qs, Expression), "a\r\nb"), "a\r\nb");
    EXPECT_EQ(replaced(replacing(u"\\r\\n"_qs, u""_qs, Expression), "a\r\nb\r\n"), "ab");
    EXPECT_EQ(replaced(replacing(u"\\n"_qs, u"-"_qs, Expression), "a\nb\n"), "a-b-");
}

TEST_F(FileSearchTest, ALineEndInTheReplacementBecomesThatOfTheFile) {
    const SearchRequest request = replacing(u","_qs, u"\\n"_qs, Expression);
    EXPECT_EQ(replaced(request, "a,b\r\nc\nd"), "a\r\nb\r\nc\nd");
    EXPECT_EQ(replaced(request, "a,b\rc"), "a\rb\rc");
    EXPECT_EQ(replaced(request, "a,b\nc\r\n"), "a\nb\nc\r\n");
    EXPECT_EQ(replaced(request, "a,b"), "a\nb");
    EXPECT_EQ(replaced(replacing(u","_qs, u"\\r\\n"_qs, Expression), "a,b\nc"), "a\nb\nc");
}

TEST_F(FileSearchTest, TheLetterCaseIsKept) {
    SearchRequest request = replacing(u"word"_qs, u"Name"_qs, {});
    request.preserveCase = true;
    EXPECT_EQ(replaced(request, "word Word WORD wORd"), "name Name NAME Name");
}

TEST_F(FileSearchTest, OnlyWholeWordsAreReplaced) {
    EXPECT_EQ(replaced(replacing(u"a"_qs, u"b"_qs, {.caseSensitive = true, .wholeWord = true}),
                       "a aa a_ \xC3\xA4"
                       "a-a"),
              "b aa a_ \xC3\xA4"
              "a-b");
}

TEST_F(FileSearchTest, ALockedTextIsSearchedAndTakesNoReplacement) {
    const std::string rest = "\r\na\nb\r";
    const std::string locked = std::string(FileSearch::LockedLine, 'x') + rest;
    EXPECT_EQ(inBytes(finding(u"a"_qs), locked).matches.matches().size(), 1U);
    const FileFinding refused = inBytes(replacing(u"a"_qs, u"c"_qs), locked);
    EXPECT_TRUE(refused.loaded);
    EXPECT_TRUE(refused.matches.empty());
    EXPECT_TRUE(refused.newText.empty());

    const std::string shorter = std::string(FileSearch::LockedLine - 1, 'x');
    EXPECT_TRUE(replaced(replacing(u"a"_qs, u"c"_qs), shorter + rest) == shorter + "\r\nc\nb\r");
    const std::string oneLineEnd = std::string(FileSearch::LockedLine, 'x');
    EXPECT_TRUE(replaced(replacing(u"a"_qs, u"c"_qs), oneLineEnd + "\na\n") == oneLineEnd + "\nc\n");
}

}  // namespace

/// Otherwise the replaced text would be that of a file that another process has left half-written.
TEST_F(FileSearchTest, AFileIsCompletedBeforeItsTextIsReplacedAndIsNotTouchedToBeSearched) {
    class Completing : public WriteWitness {
     public:
        std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& /*write*/) override { return nullptr; }
        void aboutToUse(const QByteArray& name) override {
            QFile out(QFile::decodeName(name));
            EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write("whole text") == 10);
        }
    };
    const std::atomic<bool> cancelled = false;
    LargeFiles largeFiles;
    Completing witness;
    WriteWitness::setOfProcess(&witness);
    for (const bool replaces : {false, true}) {
        const QString path = write(u"torn"_qs, "whole");
        const SearchRequest request = replaces ? replacing(u"text"_qs, u"words"_qs) : finding(u"text"_qs);
        const FileFinding found = FileSearch(request, cancelled, largeFiles).search(path, true);
        EXPECT_EQ(found.matches.empty(), !replaces);
        EXPECT_EQ(found.newText, replaces ? "whole words" : "");
    }
    WriteWitness::setOfProcess(nullptr);
}
