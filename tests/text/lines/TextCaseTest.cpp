#include "text/lines/TextCase.h"

#include <gtest/gtest.h>

TEST(TextCase, FollowsUnicode) {
    EXPECT_EQ(TextCase::upper(QString::fromUtf8("größe été")), QString::fromUtf8("GRÖSSE ÉTÉ"));
    EXPECT_EQ(TextCase::lower(QString::fromUtf8("GRÖẞE ÉTÉ")), QString::fromUtf8("größe été"));
    EXPECT_EQ(TextCase::upper(QString::fromUtf8("\U00010428")), QString::fromUtf8("\U00010400"));
    EXPECT_EQ(TextCase::lower(QString::fromUtf8("\U00010400")), QString::fromUtf8("\U00010428"));
}

TEST(TextCase, ACapitalisedWordHasOneLargeLetter) {
    EXPECT_EQ(TextCase::capitalised(u"wORD"_qs), u"Word"_qs);
    EXPECT_EQ(TextCase::capitalised(QString::fromUtf8("ß")), u"Ss"_qs);
    EXPECT_EQ(TextCase::capitalised(QString::fromUtf8("ǆABC")), QString::fromUtf8("ǅabc"));
    EXPECT_EQ(TextCase::capitalised(QString::fromUtf8("\U00010428\U00010400")),
              QString::fromUtf8("\U00010400\U00010428"));
    EXPECT_EQ(TextCase::capitalised(QString()), QString());
}

TEST(TextCase, LeavesWhatHasNoCase) {
    const QString text = QString::fromUtf8("123 漢字 \U0001F600\t\n");
    EXPECT_EQ(TextCase::upper(text), text);
    EXPECT_EQ(TextCase::lower(text), text);
    EXPECT_EQ(TextCase::capitalised(text), text);
}

TEST(TextCase, KeepsALoneSurrogate) {
    const QString text = QString(QChar(0xD83D)) + u"A"_qs;
    EXPECT_EQ(TextCase::capitalised(text), QString(QChar(0xD83D)) + u"a"_qs);
    EXPECT_EQ(TextCase::capitalised(QString(QChar(0xD83D))), QString(QChar(0xD83D)));
}
