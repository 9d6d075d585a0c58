#include "text/lines/LineOperations.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <stdexcept>

using namespace LineOperations;

namespace {

QString trimmedLeft(QString piece) {
    while (piece.startsWith(u' '))
        piece.remove(0, 1);
    return piece;
}

QString trimmedRight(QString piece) {
    while (piece.endsWith(u' '))
        piece.chop(1);
    return piece;
}

qsizetype longest(const QStringList& pieces) {
    qsizetype length = 0;
    for (const QString& piece : pieces)
        length = std::max(length, piece.size());
    return length;
}

/// A simple implementation of the operations, one line at a time, for comparison.
struct Model {
    QString lineEnd;
    QStringList pieces;

    explicit Model(const QString& text) {
        lineEnd = text.contains(u"\r\n"_qs) || !(text.contains(u'\n') || text.contains(u'\r')) ? u"\r\n"_qs
                  : text.contains(u'\n')                                                       ? u"\n"_qs
                                                                                               : u"\r"_qs;
        pieces = text.split(lineEnd);
    }
    QString trimTailed() {
        for (QString& piece : pieces)
            piece = trimmedRight(piece);
        return pieces.join(lineEnd);
    }
    QString alignLeft() {
        for (QString& piece : pieces)
            piece = trimmedLeft(piece);
        return pieces.join(lineEnd);
    }
    QString alignRight() {
        const qsizetype width = longest(pieces);
        for (QString& piece : pieces)
            piece = trimmedRight(piece).rightJustified(width, u' ');
        return pieces.join(lineEnd);
    }
    QString alignCenter() {
        const qsizetype width = longest(pieces);
        for (QString& piece : pieces) {
            const QString kept = trimmedLeft(trimmedRight(piece));
            const auto beside = std::lrint(static_cast<double>(width - kept.size()) / 2);  // rounds halves to even
            piece = QString(beside, u' ') + kept + QString(beside, u' ');
        }
        return pieces.join(lineEnd);
    }
};

}  // namespace

TEST(LineOperations, TrimTailedTakesTrailingBlanksAlone) {
    EXPECT_EQ(TrimTailed(u"  a  \n b\t \n\t\t\n \t \n   "_qs), u"  a\n b\t\n\t\t\n \t\n"_qs);
    EXPECT_EQ(TrimTailed(u"a  "_qs), u"a"_qs);
}

TEST(LineOperations, AlignLeftTakesLeadingBlanksAlone) {
    EXPECT_EQ(AlignLeft(u"  a  \n\t b\n \tc\n   "_qs), u"a  \n\t b\n\tc\n"_qs);
}

TEST(LineOperations, AlignRightFillsToTheLongestLineAsItStood) {
    EXPECT_EQ(AlignRight(u"abc\na\nab"_qs), u"abc\n  a\n ab"_qs);
    EXPECT_EQ(AlignRight(u"ab  \na"_qs), u"  ab\n   a"_qs);
    EXPECT_EQ(AlignRight(u" a\nabc "_qs), u"   a\n abc"_qs);
}

TEST(LineOperations, ASingleLineWithoutTrailingBlanksStaysAtTheRight) {
    EXPECT_EQ(AlignRight(u"  abc"_qs), u"  abc"_qs);
}

TEST(LineOperations, AlignCenterRoundsHalvesToTheEvenNumber) {
    EXPECT_EQ(AlignCenter(u"123456\na"_qs), u"123456\n  a  "_qs);          // 5 units missing: 2 at each side
    EXPECT_EQ(AlignCenter(u"12345678\na"_qs), u"12345678\n    a    "_qs);  // 7 missing: 4
    EXPECT_EQ(AlignCenter(u"12\na"_qs), u"12\na"_qs);                      // 1 missing: 0
    EXPECT_EQ(AlignCenter(u"1234\na"_qs), u"1234\n  a  "_qs);              // 3 missing: 2
    EXPECT_EQ(AlignCenter(u"12345\na"_qs), u"12345\n  a  "_qs);            // 4 missing: 2
}

TEST(LineOperations, AlignCenterCountsTheBlanksThatItTakes) {
    EXPECT_EQ(AlignCenter(u"    ab"_qs), u"  ab  "_qs);
}

TEST(LineOperations, AnEmptyLastLineIsFilledLikeTheOthers) {
    EXPECT_EQ(TrimTailed(u"a \n"_qs), u"a\n"_qs);
    EXPECT_EQ(AlignLeft(u" a\n"_qs), u"a\n"_qs);
    EXPECT_EQ(AlignRight(u"abcd\n"_qs), u"abcd\n    "_qs);
    EXPECT_EQ(AlignCenter(u"abcd\n"_qs), u"abcd\n    "_qs);
    EXPECT_EQ(AlignCenter(u"abc\n"_qs), u"abc\n    "_qs);
}

TEST(LineOperations, TheFirstKindOfLineEndFoundSplits) {
    EXPECT_EQ(lineEndOf(u"a\nb\r\nc\rd"_qs), u"\r\n"_qs);
    EXPECT_EQ(lineEndOf(u"a\rb\nc"_qs), u"\n"_qs);
    EXPECT_EQ(lineEndOf(u"a\rb"_qs), u"\r"_qs);
    EXPECT_EQ(lineEndOf(u"ab"_qs), u"\r\n"_qs);
    EXPECT_EQ(TrimTailed(u"a \nb \r\nc "_qs), u"a \nb\r\nc"_qs);
    EXPECT_EQ(TrimTailed(u"a \rb \nc "_qs), u"a \rb\nc"_qs);
}

TEST(LineOperations, TakeTextsOfBlanksAndSurrogates) {
    const QString alone = QString(QChar(0xD83D)) + u' ';
    EXPECT_EQ(TrimTailed(alone), QString(QChar(0xD83D)));
    EXPECT_EQ(AlignCenter(u"   "_qs), u"    "_qs);
    EXPECT_EQ(AlignRight(u"   "_qs), u"   "_qs);
    EXPECT_EQ(AlignRight(QString::fromUtf8("\U0001F600\na")), QString::fromUtf8("\U0001F600\n a"));
}

TEST(LineOperations, RefuseAResultThatWouldFillTheMemory) {
    const QString text = QString(2'000'000, u'x') + QString(1'000, u'\n');
    EXPECT_THROW(AlignRight(text), std::length_error);
    EXPECT_THROW(AlignCenter(text), std::length_error);
    EXPECT_EQ(TrimTailed(text).size(), text.size());
}

TEST(LineOperations, AgreeWithAPlainModel) {
    std::mt19937 random(11);
    const QStringList atoms{u" "_qs,  u" "_qs,  u"   "_qs, u"a"_qs,    u"bc"_qs,  u"\t"_qs,
                            u"\n"_qs, u"\r"_qs, u"ä"_qs,   u"\r\n"_qs, u"word"_qs};
    for (int round = 0; round < 3000; ++round) {
        QString text;
        // Every other text has only one kind of line end, the others have several.
        const auto kinds = round % 2 == 0 ? atoms.size() - 4 : atoms.size();
        for (auto left = random() % 40; left > 0; --left)
            text += atoms[static_cast<qsizetype>(random() % static_cast<unsigned>(kinds))];
        EXPECT_EQ(TrimTailed(text), Model(text).trimTailed());
        EXPECT_EQ(AlignLeft(text), Model(text).alignLeft());
        EXPECT_EQ(AlignRight(text), Model(text).alignRight());
        EXPECT_EQ(AlignCenter(text), Model(text).alignCenter());
    }
}

TEST(LineOperations, TakeAMillionLines) {
    const QString text = u"abc  \n"_qs.repeated(1'000'000);
    EXPECT_TRUE(TrimTailed(text) == u"abc\n"_qs.repeated(1'000'000));
}
