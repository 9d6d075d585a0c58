#include "shell/search/SearchInFrame.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <random>

namespace {

QByteArray native(const QString& path) {
    return QFile::encodeName(path);
}

struct stat inodeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::stat(native(path).constData(), &status), 0);
    return status;
}

bool isSameTime(const timespec& one, const timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

// Encodings

enum class Encoding { Utf8, Utf8Mark, Utf16Little, Utf16Big, Windows1252 };
constexpr std::array Encodings{Encoding::Utf8, Encoding::Utf8Mark, Encoding::Utf16Little, Encoding::Utf16Big,
                               Encoding::Windows1252};

QByteArray inUtf16(const QString& text, bool bigEndian) {
    QByteArray bytes;
    for (const QChar unit : text) {
        const char low = static_cast<char>(unit.unicode() & 0xFFU);
        const char high = static_cast<char>(unit.unicode() >> 8U);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

QByteArray encoded(const QString& text, Encoding encoding) {
    switch (encoding) {
        case Encoding::Utf8:
            return text.toUtf8();
        case Encoding::Utf8Mark:
            return "\xEF\xBB\xBF" + text.toUtf8();
        case Encoding::Utf16Little:
            return inUtf16(u"\uFEFF"_qs + text, false);
        case Encoding::Utf16Big:
            return inUtf16(u"\uFEFF"_qs + text, true);
        case Encoding::Windows1252:
            return text.toLatin1();
    }
    return {};
}

}  // namespace

class ReplaceInFiles : public SearchInFrame {};

TEST_F(ReplaceInFiles, BytesBesideTheMatchesDoNotChange) {
    start();
    const QString before = u"caf\u00E9 foo\r\n\0x\n foo\r\u00FF"_qs + QChar(0) + u"foo"_qs;
    QString after = before;
    after.replace(u"foo"_qs, u"d\u00E9j\u00E0"_qs);
    for (const Encoding encoding : Encodings) {
        const QString file = fileOf(encoded(before, encoding));
        search(replace(u"foo"_qs, u"d\u00E9j\u00E0"_qs));
        EXPECT_EQ(found(), 1);
        EXPECT_EQ(bytesOf(file), encoded(after, encoding)) << static_cast<int>(encoding);
    }
}

TEST_F(ReplaceInFiles, ABinaryFileKeepsItsOtherBytes) {
    start();
    QByteArray bytes;
    for (int i = 0; i < 512; ++i)
        bytes += static_cast<char>(i % 256);
    const QString file = fileOf(bytes + "foo" + bytes, u"a.bin"_qs);
    search(replace(u"foo"_qs, u"something"_qs));
    EXPECT_EQ(bytesOf(file), bytes + "something" + bytes);
}

TEST_F(ReplaceInFiles, ModeAndInodeOfTheFileStay) {
    start();
    const QString file = fileOf("foo");
    ASSERT_EQ(::chmod(native(file).constData(), 0741), 0);
    const struct stat before = inodeOf(file);
    search(replace(u"foo"_qs, u"longer text"_qs));
    const struct stat after = inodeOf(file);
    EXPECT_EQ(bytesOf(file), "longer text");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_uid, before.st_uid);
}

TEST_F(ReplaceInFiles, ALinkStaysALinkAndItsTargetIsChanged) {
    start();
    folder(u"in"_qs);
    const QString target = fileOf("foo", u"target.dat"_qs);
    const QString link = path(u"in/link.txt"_qs);
    ASSERT_TRUE(QFile::link(target, link));
    SearchRequest request = replace(u"foo"_qs, u"bar"_qs);
    request.directories = path(u"in"_qs);
    search(request);
    EXPECT_EQ(bytesOf(target), "bar");
    EXPECT_EQ(QFile::symLinkTarget(link), target);
    EXPECT_EQ(files(), QStringList(link));
}

TEST_F(ReplaceInFiles, TwoNamesOfOneFileAreSearchedOneAfterTheOther) {
    start();
    const QString one = fileOf("foo foo", u"a.txt"_qs);
    const QString two = path(u"b.txt"_qs);
    ASSERT_EQ(::link(native(one).constData(), native(two).constData()), 0);
    search(replace(u"foo"_qs, u"foofoo"_qs));
    EXPECT_EQ(bytesOf(one), QByteArray("foofoofoofoo foofoofoofoo"));
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(tags(0).size(), 2);
    EXPECT_EQ(tags(1).size(), 4);
    EXPECT_EQ(inodeOf(one).st_ino, inodeOf(two).st_ino);
    EXPECT_EQ(inodeOf(one).st_nlink, 2U);
}

TEST_F(ReplaceInFiles, ASecondNameOfAFileThatHasNoMatchAnyMoreIsNotCounted) {
    start();
    const QString one = fileOf("foo", u"a.txt"_qs);
    ASSERT_EQ(::link(native(one).constData(), native(path(u"b.txt"_qs)).constData()), 0);
    search(replace(u"foo"_qs, u"bar"_qs));
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(files(), QStringList(one));
}

TEST_F(ReplaceInFiles, FilesWithoutAMatchAreNotTouched) {
    start();
    const QString file = fileOf("bar");
    const struct stat before = inodeOf(file);
    search(replace(u"foo"_qs, u"x"_qs));
    const struct stat after = inodeOf(file);
    EXPECT_TRUE(isSameTime(after.st_mtim, before.st_mtim));
    EXPECT_TRUE(isSameTime(after.st_ctim, before.st_ctim));
    EXPECT_EQ(title(), u"Replace completed, changed files : 0"_qs);
}

TEST_F(ReplaceInFiles, AFileThatCannotBeWrittenIsCountedAndListedAndLeftAsItWas) {
    start();
    const QString file = fileOf("foo foo");
    ASSERT_EQ(::chmod(native(file).constData(), 0444), 0);
    const QString other = fileOf("foo", u"b.txt"_qs);
    search(replace(u"foo"_qs, u"bar"_qs));
    EXPECT_EQ(bytesOf(file), "foo foo");
    EXPECT_EQ(bytesOf(other), "bar");
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(files(), QStringList({file, other}));
    EXPECT_EQ(tags(0), QStringList({u"1,0,3"_qs, u"1,4,3"_qs}));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(ReplaceInFiles, AReplacementThatTheEncodingLacksLeavesTheFileAsItWas) {
    start();
    const QByteArray bytes = "caf\xE9 foo";
    const QString file = fileOf(bytes);
    search(replace(u"foo"_qs, u"\u65E5"_qs));
    EXPECT_EQ(bytesOf(file), bytes);
    EXPECT_EQ(found(), 1);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(ReplaceInFiles, TheLengthsInTheTreeAreThoseOfTheReplacementAsItWasTyped) {
    start();
    const QString file = fileOf("ab cd\n");
    search(expression(replace(u"(\\w)(\\w)"_qs, u"$2$1$2"_qs)));
    EXPECT_EQ(bytesOf(file), "bab dcd\n");
    EXPECT_EQ(tags(0), QStringList({u"1,0,6"_qs, u"1,4,6"_qs}));
    fileOf("ab");
    search(expression(replace(u"a(b)"_qs, u"\\1\\1"_qs)));
    EXPECT_EQ(bytesOf(file), "bb");
    EXPECT_EQ(tags(0), QStringList(u"1,0,4"_qs));
}

TEST_F(ReplaceInFiles, AnEmptyReplacementRemovesTheMatches) {
    start();
    const QString file = fileOf("a foo b foo");
    search(replace(u"foo"_qs, {}));
    EXPECT_EQ(bytesOf(file), "a  b ");
    EXPECT_EQ(tags(0), QStringList({u"1,2,0"_qs, u"1,5,0"_qs}));
}

TEST_F(ReplaceInFiles, TheReplacementKeepsTheCaseOfWhatItReplaces) {
    start();
    const QString file = fileOf("foo Foo FOO");
    SearchRequest request = replace(u"foo"_qs, u"bar"_qs);
    request.preserveCase = true;
    search(request);
    EXPECT_EQ(bytesOf(file), "bar Bar BAR");
    fileOf("foo Foo FOO");
    request.flags.caseSensitive = true;
    search(request);
    EXPECT_EQ(bytesOf(file), "bar Foo FOO");
    fileOf("foo food");
    request.flags = {false, false, true};
    search(request);
    EXPECT_EQ(bytesOf(file), "bar food");
}

TEST_F(ReplaceInFiles, ADocumentThatHasTheFileOpenLearnsOfItByItsOwnCheck) {
    start();
    const QString file = fileOf("foo");
    const timespec longAgo[] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, native(file).constData(), longAgo, 0), 0);
    open(file);
    search(replace(u"foo"_qs, u"longer"_qs));
    EXPECT_EQ(bytesOf(file), "longer");
    EXPECT_EQ(text(), u"foo"_qs);
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    m_prompts.answerYes();
    m_frame->CheckFileUpdate();
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(text(), u"longer"_qs);
}

TEST_F(ReplaceInFiles, AFileOfTheProjectIsReplacedToo) {
    start();
    const QString file = fileOf("foo");
    const QString other = fileOf("foo", u"b.txt"_qs);
    m_frame->ProjectFilename = path(u"p.qmp"_qs);
    m_items.items = {{file, u"FILE"_qs}};
    search(in(SearchIn::ProjectFiles, replace(u"foo"_qs, u"bar"_qs)));
    EXPECT_EQ(bytesOf(file), "bar");
    EXPECT_EQ(bytesOf(other), "foo");
}

TEST_F(ReplaceInFiles, MissingDirectoriesBetweenTheOthersDoNotEndIt) {
    start();
    QStringList all;
    SearchRequest request = replace(u"foo"_qs, u"bar"_qs);
    request.directories.clear();
    for (int i = 0; i < 5; ++i) {
        folder(u"d%1"_qs.arg(i));
        all << fileOf("foo", u"d%1/a.txt"_qs.arg(i)) << fileOf("foo", u"d%1/b.txt"_qs.arg(i));
        request.directories += path(u"d%1"_qs.arg(i)) + u';' + path(u"gone%1"_qs.arg(i)) + u';';
    }
    search(request);
    EXPECT_EQ(files(), all);
    for (const QString& file : all) {
        EXPECT_EQ(bytesOf(file), "bar");
    }
    EXPECT_EQ(m_prompts.messages.size(), 5);
}

// Against a model

/// In more files with QUILLMARK_TEST_FILES=NUMBER in the environment.
class ReplaceEqualsModel : public SearchInFrame, public testing::WithParamInterface<int> {
 protected:
    static int fileCount() {
        constexpr int Usual = 2'000;
        return std::max(Usual, qEnvironmentVariableIntValue("QUILLMARK_TEST_FILES"));
    }
    static constexpr std::array<const char16_t*, 9> Words{u"foo", u"Foo", u"caf\u00E9", u"f",     u"oo",
                                                          u" ",   u"\n",  u"\r\n",      u"\u00FF"};

    QString generatedText() {
        QString text = u"\u00E9"_qs;  // of which one byte alone is no UTF-8
        for (int n = below(60); n > 0; --n)
            text += QString::fromUtf16(Words[static_cast<std::size_t>(below(static_cast<int>(Words.size())))]);
        return text;
    }
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    std::mt19937 m_random;
};

TEST_P(ReplaceEqualsModel, InManyFilesOfAllEncodings) {
    start();
    m_random.seed(static_cast<unsigned>(GetParam()));
    std::vector<std::pair<QString, QByteArray>> expected;
    int changed = 0;
    const int count = fileCount();
    for (int i = 0; i < count; ++i) {
        const Encoding encoding = Encodings[static_cast<std::size_t>(i) % Encodings.size()];
        const QString before = generatedText();
        QString after = before;
        after.replace(u"foo"_qs, u"\u00E0 la"_qs);
        changed += after == before ? 0 : 1;
        const QString sub = u"d%1"_qs.arg(i % 7);
        folder(sub);
        const QString file = fileOf(encoded(before, encoding), u"%1/%2.txt"_qs.arg(sub).arg(i));
        expected.emplace_back(file, encoded(after, encoding));
    }
    SearchRequest request = replace(u"foo"_qs, u"\u00E0 la"_qs);
    request.flags.caseSensitive = true;
    request.subDirectories = true;
    search(request);
    for (const auto& [file, bytes] : expected) {
        ASSERT_EQ(bytesOf(file), bytes) << file.toStdString();
    }
    EXPECT_EQ(searched(), count);
    EXPECT_EQ(found(), changed);
    EXPECT_EQ(files().size(), changed);
    EXPECT_GT(changed, count / 4);
}

INSTANTIATE_TEST_SUITE_P(Share, ReplaceEqualsModel, testing::Range(0, 3));
