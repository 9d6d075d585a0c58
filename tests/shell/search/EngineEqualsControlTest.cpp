// The search of files works outside of the editing control, and must find what the control would find. Both search the
// same generated files.

#include "document/rtCM.h"
#include "search/engine/FileSearch.h"
#include "support/ScriptedServices.h"
#include "text/held/Joints.h"
#include "text/search/MatchList.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace {

using Random = std::mt19937;

int below(Random& random, int end) {
    return std::uniform_int_distribution<int>(0, end - 1)(random);
}

template <typename Value, std::size_t Count>
const Value& anyOf(Random& random, const std::array<Value, Count>& values) {
    return values[static_cast<std::size_t>(below(random, Count))];
}

// Texts

const std::array<QString, 34> Words{u"foo"_qs,
                                    u"Foo"_qs,
                                    u"FOO"_qs,
                                    u"foobar"_qs,
                                    u"bar_foo"_qs,
                                    u"kiss"_qs,
                                    u"KISS"_qs,
                                    u"\u212Ai\u017Fs"_qs,
                                    u"stra\u00DFe"_qs,
                                    u"STRASSE"_qs,
                                    u"\u00E9t\u00E9"_qs,
                                    u"\u00C9T\u00C9"_qs,
                                    u"e\u0301"_qs,
                                    u"\U0001F600"_qs,
                                    u"a"_qs,
                                    u"aa"_qs,
                                    u"aaa"_qs,
                                    u"42"_qs,
                                    u"4.2e1"_qs,
                                    u"x1_y2"_qs,
                                    u"\t"_qs,
                                    u"  "_qs,
                                    u"foo.bar()"_qs,
                                    u"[x]"_qs,
                                    u"(foo)"_qs,
                                    u"a+b"_qs,
                                    u"$1"_qs,
                                    u"\\n"_qs,
                                    u"\u20AC"_qs,
                                    u"\u65E5\u672C"_qs,
                                    u"\uFFFD"_qs,
                                    u"\u00A0"_qs,
                                    u"\u2028"_qs,
                                    u"-"_qs};

const std::array<QString, 4> LineEnds{u"\n"_qs, u"\r\n"_qs, u"\r"_qs, u"\n\r"_qs};

QString lineEnd(Random& random, int style) {
    return style < 4 ? LineEnds[static_cast<std::size_t>(style)] : anyOf(random, LineEnds);
}

QString generatedText(Random& random) {
    QString text;
    const int style = below(random, 6);
    const int words = below(random, 10) == 0 ? 0 : below(random, 120);
    for (int i = 0; i < words; ++i) {
        text += anyOf(random, Words);
        const int next = below(random, 8);
        if (next == 0)
            text += lineEnd(random, style);
        else if (next < 5)
            text += u' ';
        else if (next == 5 && below(random, 20) == 0)
            text += QChar(0);
    }
    if (below(random, 40) == 0)
        text.insert(below(random, static_cast<int>(text.size()) + 1), (anyOf(random, Words) + u' ').repeated(20'000));
    return text;
}

// Bytes

QByteArray utf16(const QString& text, bool bigEndian) {
    QByteArray bytes(bigEndian ? "\xFE\xFF" : "\xFF\xFE");
    for (const QChar unit : text) {
        const char low = static_cast<char>(unit.unicode() & 0xFFU);
        const char high = static_cast<char>(unit.unicode() >> 8U);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

QByteArray latin(const QString& text) {
    QByteArray bytes;
    for (const QChar unit : text)
        bytes += static_cast<char>(unit.unicode() < 0x100 ? unit.unicode() : 0x80 + unit.unicode() % 0x20);
    return bytes;
}

QByteArray randomBytes(Random& random) {
    QByteArray bytes;
    for (int i = below(random, 400); i > 0; --i)
        bytes += static_cast<char>(below(random, 256));
    return bytes;
}

QByteArray damaged(Random& random, QByteArray bytes) {
    if (!bytes.isEmpty())
        bytes[below(random, static_cast<int>(bytes.size()))] = static_cast<char>(below(random, 256));
    return bytes;
}

QByteArray generatedFile(Random& random) {
    const QString text = generatedText(random);
    switch (below(random, 10)) {
        case 0:
            return QByteArray("\xEF\xBB\xBF") + text.toUtf8();
        case 1:
            return utf16(text, false);
        case 2:
            return utf16(text, true);
        case 3:
            return latin(text);
        case 4:
            return damaged(random, text.toUtf8());
        case 5:
            return utf16(text, below(random, 2) == 0) + QByteArray(below(random, 2), 'x');
        case 6:
            return utf16(text + QChar(0xD800 + below(random, 0x800)), below(random, 2) == 0);
        case 7:
            return below(random, 4) == 0 ? randomBytes(random) : QByteArray("\xEF\xBB\xBF\x80") + text.toUtf8();
        default:
            return text.toUtf8();
    }
}

// Requests

const std::array<QString, 40> Expressions{
    u"fo+"_qs,         u"\\bfoo\\b"_qs,    u"^"_qs,          u"$"_qs,         u"^foo"_qs,
    u"bar$"_qs,        u"\\w+"_qs,         u"[a-f]+\\d*"_qs, u"(a|aa)b?"_qs,  u"(?i)KISS"_qs,
    u"(?<=foo)bar"_qs, u"foo(?!bar)"_qs,   u"a*"_qs,         u"x*?"_qs,       u"\\s+"_qs,
    u"\\R"_qs,         u"\\n"_qs,          u"\\r"_qs,        u"\\r\\n"_qs,    u"foo\\s+foo"_qs,
    u"(\\w)\\1"_qs,    u"\\x{E9}"_qs,      u"."_qs,          u".*"_qs,        u"\\p{Lu}+"_qs,
    u"\\Gfoo ?"_qs,    u"(*ANYCRLF)^a"_qs, u"[^\\w\\s]+"_qs, u"\\d{1,2}"_qs,  u"fo{2}(?:bar)?"_qs,
    u"\\Qa+b\\E"_qs,   u"\\ki"_qs,         u"(unclosed"_qs,  u"\\0"_qs,       u"k"_qs,
    u"s{2}"_qs,        u"\\(foo\\)"_qs,    u"foo|kiss"_qs,   u"(?s)a.+?a"_qs, u"\\K"_qs};

const std::array<QString, 12> Substitutes{u""_qs,       u"x"_qs,       u"foo"_qs,    u"$0$0"_qs,
                                          u"<\\1>"_qs,  u"a\nb"_qs,    u"\\r\\n"_qs, u"\u20AC\u00E9"_qs,
                                          u"\u65E5"_qs, u"Foo bar"_qs, u"\n"_qs,     u"\\"_qs};

QString partOf(Random& random, const QString& word) {
    const int from = below(random, static_cast<int>(word.size()));
    return word.mid(from, 1 + below(random, static_cast<int>(word.size()) - from));
}

QString literal(Random& random) {
    switch (below(random, 4)) {
        case 0:
            return partOf(random, anyOf(random, Words));
        case 1:
            return anyOf(random, Words) + u' ' + anyOf(random, Words);
        case 2:
            return anyOf(random, Words) + anyOf(random, LineEnds) +
                   (below(random, 2) == 0 ? u""_qs : anyOf(random, Words));
        default:
            return anyOf(random, Words);
    }
}

SearchRequest generatedRequest(Random& random) {
    SearchRequest request;
    request.flags = {below(random, 2) == 0, below(random, 2) == 0, below(random, 3) == 0};
    request.text = request.flags.regExp ? anyOf(random, Expressions) : literal(random);
    if (request.flags.regExp && below(random, 3) == 0)
        request.text = u"(?:"_qs + request.text + u")"_qs + QRegularExpression::escape(anyOf(random, Words));
    request.replacement = anyOf(random, Substitutes);
    request.preserveCase = below(random, 3) == 0;
    return request;
}

constexpr int Requests = 1000;

/// All requests of these tests.
const std::vector<SearchRequest>& requests() {
    static const std::vector<SearchRequest> all = [] {
        Random random(1);
        std::vector<SearchRequest> made;
        made.reserve(Requests);
        for (int i = 0; i < Requests; ++i)
            made.push_back(generatedRequest(random));
        return made;
    }();
    return all;
}

std::string listOf(const FileMatches& matches) {
    MatchList list;
    for (const FileMatches::Match& match : matches.matches())
        list.add(matches.lineNumber(match) - 1, match.start, match.length);
    return list.text().toStdString();
}

/// The control cuts long lines at bytes that make one line end with a CR or an LF that a replacement puts beside them,
/// so its line numbers are too small from there on.
bool mayJoinLines(const std::string& text) {
    return static_cast<qint64>(text.size()) > LongLine && text.find('\r') != std::string::npos;
}

/// The units of a line that a list keeps.
QString keptOf(const QString& line) {
    const QString kept = line.left(FileMatches::LongestText);
    const bool splitsPair = !kept.isEmpty() && kept.back().isHighSurrogate() && kept.size() < line.size();
    return splitsPair ? kept.chopped(1) : kept;
}

std::string told(const SearchRequest& request) {
    const auto flag = [](bool on, const char* name) { return on ? std::string(name) : std::string(); };
    return "'" + request.text.toStdString() + "' by '" + request.replacement.toStdString() + "'" +
           flag(request.flags.regExp, " expression") + flag(request.flags.caseSensitive, " case") +
           flag(request.flags.wholeWord, " word") + flag(request.preserveCase, " preserved");
}

}  // namespace

/// Each of these takes a share of the files.
class EngineEqualsControl : public testing::TestWithParam<int> {
 protected:
    static constexpr int Files = 2'000;

    QString write(const QByteArray& bytes) const {
        QString path = m_folder.filePath(u"a.dat"_qs);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path;
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    FileFinding finding(const SearchRequest& request, const QString& path) const {
        LargeFiles largeFiles;
        return FileSearch(request, m_cancelled, largeFiles).search(path);
    }
    QString listOfControl(const SearchRequest& request, const QString& path);
    void expectSameLines(const FileMatches& matches) const;
    QByteArray bytesOfEngine(const FileFinding& found, const QByteArray& before) const;

    QTemporaryDir m_folder;
    ScriptedServices m_given;
    rtCM m_view{m_given.all};
    const std::atomic<bool> m_cancelled = false;
};

QString EngineEqualsControl::listOfControl(const SearchRequest& request, const QString& path) {
    QString list;
    EXPECT_TRUE(m_view.OpenFile(path, true));
    const SearchFlags& flags = request.flags;
    if (request.replaces) {
        m_view.ReplaceAllMatch(request.text, request.replacement, list, flags.regExp, flags.caseSensitive,
                               request.preserveCase, flags.wholeWord);
    } else {
        m_view.FindAllMatch(request.text, list, flags.regExp, flags.caseSensitive, flags.wholeWord);
    }
    return list;
}

void EngineEqualsControl::expectSameLines(const FileMatches& matches) const {
    qint64 last = 0;
    for (const FileMatches::Match& match : matches.matches()) {
        const qint64 number = matches.lineNumber(match);
        if (number == last)
            continue;
        last = number;
        ASSERT_EQ(matches.lineText(match), keptOf(m_view.GetLine(number - 1)));
    }
}

QByteArray EngineEqualsControl::bytesOfEngine(const FileFinding& found, const QByteArray& before) const {
    if (found.matches.empty())
        return before;
    const std::string_view text = found.newText;
    const EncodedText encoded = encodeText(std::span(&text, 1), found.format);
    if (encoded.failure)
        return before;
    QByteArray bytes;
    for (const std::string_view piece : encoded.pieces)
        bytes.append(piece.data(), static_cast<qsizetype>(piece.size()));
    return bytes;
}

TEST_P(EngineEqualsControl, WhenItFinds) {
    Random random(static_cast<unsigned>(GetParam()));
    qint64 matches = 0;
    for (int i = 0; i < Files; ++i) {
        SearchRequest request = requests()[static_cast<std::size_t>(i + GetParam() * 137) % requests().size()];
        const QString path = write(generatedFile(random));
        const FileFinding found = finding(request, path);
        ASSERT_TRUE(found.loaded);
        ASSERT_FALSE(found.gaveUp);
        ASSERT_EQ(listOf(found.matches), listOfControl(request, path).toStdString()) << i << ": " << told(request);
        expectSameLines(found.matches);
        ASSERT_FALSE(HasFatalFailure()) << i << ": " << told(request);
        matches += static_cast<qint64>(found.matches.matches().size());
    }
    EXPECT_GT(matches, Files);
}

TEST_P(EngineEqualsControl, WhenItReplaces) {
    Random random(static_cast<unsigned>(1000 + GetParam()));
    int changed = 0;
    for (int i = 0; i < Files; ++i) {
        SearchRequest request = requests()[static_cast<std::size_t>(i + GetParam() * 137) % requests().size()];
        request.replaces = true;
        const QByteArray before = generatedFile(random);
        const QString path = write(before);
        const FileFinding found = finding(request, path);
        ASSERT_TRUE(found.loaded);
        const QString list = listOfControl(request, path);
        if (!mayJoinLines(found.newText)) {
            ASSERT_EQ(listOf(found.matches), list.toStdString()) << i << ": " << told(request);
            expectSameLines(found.matches);
        }
        ASSERT_FALSE(HasFatalFailure()) << i << ": " << told(request);
        if (list.isEmpty())
            continue;
        m_view.SaveFile(path, 1);
        ASSERT_EQ(bytesOfEngine(found, before), read(path)) << i << ": " << told(request);
        ++changed;
    }
    EXPECT_GT(changed, Files / 10);
}

INSTANTIATE_TEST_SUITE_P(Share, EngineEqualsControl, testing::Range(0, 6));
