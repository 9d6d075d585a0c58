#include "document/frmCountAll.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QString shown(const frmCountAll& box, const char* name) {
    const auto* label = box.findChild<QLabel*>(QString::fromLatin1(name));
    return label == nullptr ? QStringLiteral("no such label") : label->text();
}

}  // namespace

TEST(frmCountAll, ShowsEachCountUnderItsName) {
    frmCountAll box;
    box.setCounts({1, 22, 333, 4444}, {5, 0, 1'000'000, 999});
    EXPECT_EQ(shown(box, "lbW"), QStringLiteral("1"));
    EXPECT_EQ(shown(box, "lbL"), QStringLiteral("22"));
    EXPECT_EQ(shown(box, "lbC"), QStringLiteral("333"));
    EXPECT_EQ(shown(box, "lbCN"), QStringLiteral("4,444"));
    EXPECT_EQ(shown(box, "lbSelW"), QStringLiteral("5"));
    EXPECT_EQ(shown(box, "lbSelL"), QStringLiteral("0"));
    EXPECT_EQ(shown(box, "lbSelC"), QStringLiteral("1,000,000"));
    EXPECT_EQ(shown(box, "lbSelCN"), QStringLiteral("999"));
}

TEST(frmCountAll, BearsItsTexts) {
    const frmCountAll box;
    EXPECT_EQ(box.findChild<QGroupBox*>()->title(), QStringLiteral(" Statistics "));
    QStringList texts;
    for (const QLabel* label : box.findChildren<QLabel*>())
        texts << label->text();
    for (const char* text :
         {"Total", "Selected", "Words:", "Lines:", "Characters(with spaces):", "Characters(no spaces):"})
        EXPECT_TRUE(texts.contains(QString::fromLatin1(text))) << text;
    EXPECT_EQ(box.findChild<QPushButton*>(QStringLiteral("cmdClose"))->text(), QStringLiteral("Close"));
}

TEST(frmCountAll, CloseHidesIt) {
    frmCountAll box;
    box.show();
    QTest::mouseClick(box.findChild<QPushButton*>(QStringLiteral("cmdClose")), Qt::LeftButton);
    EXPECT_TRUE(box.isHidden());
    box.show();
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(box.isHidden());
}
