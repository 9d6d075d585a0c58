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

/// The operations again, a line at a time and with plain texts.
struct Model {
    QString lineEnd;
    QStringList pieces;

    explicit Model(const QString& text) {
        lineEnd = text.contains(QStringLiteral("\r\n")) || !(text.contains(u'\n') || text.contains(u'\r'))
                      ? QStringLiteral("\r\n")
                  : text.contains(u'\n') ? QStringLiteral("\n")
                                         : QStringLiteral("\r");
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
            const auto beside = std::lrint(static_cast<double>(width - kept.size()) / 2);  // halves to even
            piece = QString(beside, u' ') + kept + QString(beside, u' ');
        }
        return pieces.join(lineEnd);
    }
};

}  // namespace

TEST(LineOperations, TrimTailedTakesTrailingBlanksAlone) {
    EXPECT_EQ(TrimTailed(QStringLiteral("  a  \n b\t \n\t\t\n \t \n   ")), QStringLiteral("  a\n b\t\n\t\t\n \t\n"));
    EXPECT_EQ(TrimTailed(QStringLiteral("a  ")), QStringLiteral("a"));
}

TEST(LineOperations, AlignLeftTakesLeadingBlanksAlone) {
    EXPECT_EQ(AlignLeft(QStringLiteral("  a  \n\t b\n \tc\n   ")), QStringLiteral("a  \n\t b\n\tc\n"));
}

TEST(LineOperations, AlignRightFillsToTheLongestLineAsItStood) {
    EXPECT_EQ(AlignRight(QStringLiteral("abc\na\nab")), QStringLiteral("abc\n  a\n ab"));
    EXPECT_EQ(AlignRight(QStringLiteral("ab  \na")), QStringLiteral("  ab\n   a"));
    EXPECT_EQ(AlignRight(QStringLiteral(" a\nabc ")), QStringLiteral("   a\n abc"));
}

TEST(LineOperations, ASingleLineWithoutTrailingBlanksStaysAtTheRight) {
    EXPECT_EQ(AlignRight(QStringLiteral("  abc")), QStringLiteral("  abc"));
}

TEST(LineOperations, AlignCenterRoundsHalvesToTheEvenNumber) {
    EXPECT_EQ(AlignCenter(QStringLiteral("123456\na")), QStringLiteral("123456\n  a  "));          // 5: 2 beside it
    EXPECT_EQ(AlignCenter(QStringLiteral("12345678\na")), QStringLiteral("12345678\n    a    "));  // 7: 4
    EXPECT_EQ(AlignCenter(QStringLiteral("12\na")), QStringLiteral("12\na"));                      // 1: 0
    EXPECT_EQ(AlignCenter(QStringLiteral("1234\na")), QStringLiteral("1234\n  a  "));              // 3: 2
    EXPECT_EQ(AlignCenter(QStringLiteral("12345\na")), QStringLiteral("12345\n  a  "));            // 4: 2
}

TEST(LineOperations, AlignCenterCountsTheBlanksThatItTakes) {
    EXPECT_EQ(AlignCenter(QStringLiteral("    ab")), QStringLiteral("  ab  "));
}

TEST(LineOperations, AnEmptyLastLineIsFilledLikeTheOthers) {
    EXPECT_EQ(TrimTailed(QStringLiteral("a \n")), QStringLiteral("a\n"));
    EXPECT_EQ(AlignLeft(QStringLiteral(" a\n")), QStringLiteral("a\n"));
    EXPECT_EQ(AlignRight(QStringLiteral("abcd\n")), QStringLiteral("abcd\n    "));
    EXPECT_EQ(AlignCenter(QStringLiteral("abcd\n")), QStringLiteral("abcd\n    "));
    EXPECT_EQ(AlignCenter(QStringLiteral("abc\n")), QStringLiteral("abc\n    "));
}

TEST(LineOperations, TheFirstKindOfLineEndFoundSplits) {
    EXPECT_EQ(lineEndOf(QStringLiteral("a\nb\r\nc\rd")), QStringLiteral("\r\n"));
    EXPECT_EQ(lineEndOf(QStringLiteral("a\rb\nc")), QStringLiteral("\n"));
    EXPECT_EQ(lineEndOf(QStringLiteral("a\rb")), QStringLiteral("\r"));
    EXPECT_EQ(lineEndOf(QStringLiteral("ab")), QStringLiteral("\r\n"));
    EXPECT_EQ(TrimTailed(QStringLiteral("a \nb \r\nc ")), QStringLiteral("a \nb\r\nc"));
    EXPECT_EQ(TrimTailed(QStringLiteral("a \rb \nc ")), QStringLiteral("a \rb\nc"));
}

TEST(LineOperations, TakeTextsOfBlanksAndSurrogates) {
    const QString alone = QString(QChar(0xD83D)) + u' ';
    EXPECT_EQ(TrimTailed(alone), QString(QChar(0xD83D)));
    EXPECT_EQ(AlignCenter(QStringLiteral("   ")), QStringLiteral("    "));
    EXPECT_EQ(AlignRight(QStringLiteral("   ")), QStringLiteral("   "));
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
    const QStringList atoms{QStringLiteral(" "),  QStringLiteral(" "),    QStringLiteral("   "), QStringLiteral("a"),
                            QStringLiteral("bc"), QStringLiteral("\t"),   QStringLiteral("\n"),  QStringLiteral("\r"),
                            QStringLiteral("ä"),  QStringLiteral("\r\n"), QStringLiteral("word")};
    for (int round = 0; round < 3000; ++round) {
        QString text;
        // Some texts are of one kind of line end, some of several.
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
    const QString text = QStringLiteral("abc  \n").repeated(1'000'000);
    EXPECT_TRUE(TrimTailed(text) == QStringLiteral("abc\n").repeated(1'000'000));
}
