#include "search/results/RowText.h"

#include <gtest/gtest.h>

TEST(RowTextTest, ATextWithoutControlCharactersStaysAsItIs) {
    const QString text = u"  12 : \u00e4 = b; \U0001F600"_qs;
    EXPECT_EQ(shownRowText(text), text);
    EXPECT_EQ(shownRowText({}), QString());
}

TEST(RowTextTest, ControlCharactersBecomeDotsInTheSamePlaces) {
    constexpr char16_t Controls[] = {0x00, 0x0a, 0x0d, 0x0c, 0x1b, 0x7f, 0x81, 0x85, 0x2028, 0x2029};
    for (const char16_t control : Controls) {
        EXPECT_EQ(shownRowText(u"ab"_qs + QChar(control) + u"c"_qs), u"ab\u00b7c"_qs) << int(control);
    }
}

TEST(RowTextTest, ATabStays) {
    EXPECT_EQ(shownRowText(u"\tx"_qs), u"\tx"_qs);
}

TEST(RowTextTest, OfALongTextTheFirstThousandUnitsAreShown) {
    EXPECT_EQ(shownRowText(QString(5000, u'x')), QString(1000, u'x'));
    EXPECT_EQ(shownRowText(QString(1000, u'x')).size(), 1000);
}

TEST(RowTextTest, ACharacterOfTwoUnitsIsNotCut) {
    const QString text = QString(999, u'x') + u"\U0001F600"_qs;
    EXPECT_EQ(shownRowText(text), QString(999, u'x'));
    EXPECT_EQ(shownRowText(text.mid(1)), text.mid(1));
}
