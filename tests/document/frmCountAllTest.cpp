#include "document/frmCountAll.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QString shown(const frmCountAll& box, const char* name) {
    const auto* label = box.findChild<QLabel*>(QString::fromLatin1(name));
    return label == nullptr ? u"no such label"_qs : label->text();
}

}  // namespace

TEST(frmCountAll, ShowsEachCountUnderItsName) {
    frmCountAll box;
    box.setCounts({1, 22, 333, 4444}, {5, 0, 1'000'000, 999});
    EXPECT_EQ(shown(box, "lbW"), u"1"_qs);
    EXPECT_EQ(shown(box, "lbL"), u"22"_qs);
    EXPECT_EQ(shown(box, "lbC"), u"333"_qs);
    EXPECT_EQ(shown(box, "lbCN"), u"4,444"_qs);
    EXPECT_EQ(shown(box, "lbSelW"), u"5"_qs);
    EXPECT_EQ(shown(box, "lbSelL"), u"0"_qs);
    EXPECT_EQ(shown(box, "lbSelC"), u"1,000,000"_qs);
    EXPECT_EQ(shown(box, "lbSelCN"), u"999"_qs);
}

TEST(frmCountAll, BearsItsTexts) {
    const frmCountAll box;
    EXPECT_EQ(box.findChild<QGroupBox*>()->title(), u" Statistics "_qs);
    QStringList texts;
    for (const QLabel* label : box.findChildren<QLabel*>())
        texts << label->text();
    for (const char* text :
         {"Total", "Selected", "Words:", "Lines:", "Characters(with spaces):", "Characters(no spaces):"}) {
        EXPECT_TRUE(texts.contains(QString::fromLatin1(text))) << text;
    }
    EXPECT_EQ(box.findChild<QPushButton*>(u"cmdClose"_qs)->text(), u"Close"_qs);
}

TEST(frmCountAll, CloseHidesIt) {
    frmCountAll box;
    box.show();
    QTest::mouseClick(box.findChild<QPushButton*>(u"cmdClose"_qs), Qt::LeftButton);
    EXPECT_TRUE(box.isHidden());
    box.show();
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(box.isHidden());
}
