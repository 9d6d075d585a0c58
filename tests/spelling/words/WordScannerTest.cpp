#include "spelling/words/WordScanner.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

constexpr qsizetype Much = 1'000'000;

QStringList wordsOf(const QString& text, qsizetype most = Much) {
    WordScanner scanner(text);
    QStringList words;
    while (!scanner.atEnd()) {
        if (const auto place = scanner.next(most))
            words << text.mid(place->position, place->length);
    }
    return words;
}

struct Row {
    const char16_t* text;
    const char16_t* words;  ///< with blanks between them
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << QString::fromUtf16(row.text).toStdString();
}

class Words : public testing::TestWithParam<Row> {};

}  // namespace

TEST_P(Words, AreFound) {
    const QString text = QString::fromUtf16(GetParam().text);
    const QStringList expected = QString::fromUtf16(GetParam().words).split(u' ', Qt::SkipEmptyParts);
    EXPECT_EQ(wordsOf(text), expected);
    EXPECT_EQ(wordsOf(text, 1), expected) << "in small steps";
}

INSTANTIATE_TEST_SUITE_P(Prose, Words,
                         testing::Values(Row{u"", u""}, Row{u"one", u"one"},
                                         Row{u" one, two.\r\nThree!", u"one two Three"}, Row{u"I am a man", u"am man"},
                                         Row{u"well-known fact", u"well known fact"},
                                         Row{u"and/or he/she", u"and or he she"},
                                         Row{u"(one)[two]{three}", u"one two three"}, Row{u"wait...then", u"wait then"},
                                         Row{u"end. Next", u"end Next"},
                                         Row{u"*bold* 'quoted' \"said\"", u"bold quoted said"},
                                         Row{u"don't dogs' 'tis", u"don't dogs tis"}, Row{u"don\u2019t", u"don\u2019t"},
                                         Row{u"O'Brien l'Europe d'Artagnan", u"O'Brien l'Europe d'Artagnan"},
                                         Row{u"one--two\u2014three", u"one two three"}, Row{u"a''b", u""},
                                         Row{u"one\ttwo\u00a0three", u"one two three"}));

INSTANTIATE_TEST_SUITE_P(
    Unicode, Words,
    testing::Values(Row{u"na\u00efve stra\u00dfe", u"na\u00efve stra\u00dfe"},
                    Row{u"cafe\u0301 noir", u"cafe\u0301 noir"},
                    Row{u"\u041f\u0440\u0438\u0432\u0435\u0442", u"\u041f\u0440\u0438\u0432\u0435\u0442"},
                    Row{u"co\u00adop", u"co\u00adop"}, Row{u"col\u00b7la", u"col\u00b7la"},
                    Row{u"\u65e5\u672c\u8a9e \u3072\u3089\u304c\u306a \u0e44\u0e17\u0e22", u""},
                    Row{u"\U00010400\U00010428\U00010429 one", u"\U00010400\U00010428\U00010429 one"},
                    Row{u"\xd800 one \xdc00two", u"one two"}, Row{u"smile \U0001F600 two", u"smile two"},
                    Row{u"\u0915\u094d\u200d\u0937\u0924\u094d\u0930", u"\u0915\u094d\u200d\u0937\u0924\u094d\u0930"}));

INSTANTIATE_TEST_SUITE_P(
    Code, Words,
    testing::Values(Row{u"foo_bar _one __init__", u""}, Row{u"camelCase PascalCase HTTPServer iPhone", u""},
                    Row{u"README HTTP ISBN", u""}, Row{u"0x1F x86 utf8 3rd 1920s 12", u""},
                    Row{u"std::vector p->next", u""}, Row{u"a -> thing b :: other", u"thing other"},
                    Row{u"#include <vector>", u""}, Row{u"\\section{Title} \"\\nhello\"", u"Title"},
                    Row{u"$HOME @param thing", u"thing"}, Row{u"<b>bold</b> &nbsp; R&D;", u"bold"},
                    Row{u"this & that", u"this that"}, Row{u"main.cpp foo.bar.baz() .gitignore", u""},
                    Row{u"e.g. this i.e. that", u"this that"}, Row{u"// comment here", u"comment here"},
                    Row{u"//comment here", u"comment here"}, Row{u"/* block */ text", u"block text"},
                    Row{u"printf(\"hallo\");", u"printf hallo"}));

INSTANTIATE_TEST_SUITE_P(Addresses, Words,
                         testing::Values(Row{u"see https://example.org/path?query=two#three now", u"see now"},
                                         Row{u"www.example.org/some/page two", u"two"},
                                         Row{u"<a href=\"http://foo/bar\">link</a>", u"href link"},
                                         Row{u"mail somebody@example.org today", u"mail today"},
                                         Row{u"first.last+tag@mail.example.org!", u""},
                                         Row{u"mailto:some@where.org end", u"mailto end"},
                                         Row{u"/usr/share/hunspell folder", u"folder"},
                                         Row{u"~/notes ./make ../src/foo done", u"done"},
                                         Row{u"in \"/etc/passwd\" there", u"in there"},
                                         Row{u"src/spelling/main.cpp and src/ too", u"and too"},
                                         Row{u"C:\\Windows\\System and D:/data end", u"and end"},
                                         Row{u"localhost:8080 example.org:8080/path end", u"localhost end"}));

TEST(WordScanner, AWordHasAtMostAHundredLetters) {
    const QString longest(WordScanner::LongestWord, u'a');
    EXPECT_EQ(wordsOf(longest), QStringList(longest));
    EXPECT_EQ(wordsOf(longest + u'a'), QStringList());
    EXPECT_EQ(wordsOf(u"one "_qs + longest + u"a two"_qs), QStringList({u"one"_qs, u"two"_qs}));
}

TEST(WordScanner, NoStepExaminesMoreThanItMay) {
    for (const QString& text : {QString(Much, u'a'), u"http://"_qs + QString(Much, u'a'), QString(Much, u' '),
                                u"a."_qs.repeated(Much / 2), u"a-"_qs.repeated(Much / 2)}) {
        WordScanner scanner(text);
        qsizetype before = 0;
        while (!scanner.atEnd()) {
            EXPECT_FALSE(scanner.next(1000));
            ASSERT_GT(scanner.position(), before);
            ASSERT_LE(scanner.position() - before, 2000) << text.left(10).toStdString();
            before = scanner.position();
        }
    }
}

TEST(WordScanner, ItCanBeginAtAnyWord) {
    const QString text = u"one \\two three.four five"_qs;
    WordScanner scanner(text);
    while (!scanner.atEnd()) {
        const auto place = scanner.next(Much);
        if (place) {
            EXPECT_EQ(WordScanner(text, place->position).next(Much), place);
        }
    }
}
