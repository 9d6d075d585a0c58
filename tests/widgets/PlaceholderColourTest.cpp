#include "widgets/Contrast.h"
#include "widgets/PlaceholderColour.h"

#include <QApplication>
#include <QPalette>

#include <gtest/gtest.h>

TEST(PlaceholderColour, CanBeReadAndIsFainterThanTextInEveryTheme) {
    const QPalette before = QApplication::palette();
    PlaceholderColour::follow();
    const QColor unreadable(0, 0, 0, 128);
    for (const auto& [text, base] :
         {std::pair(QColor(Qt::white), QColor(0x1B, 0x1E, 0x20)), std::pair(QColor(Qt::black), QColor(Qt::white)),
          std::pair(QColor(0xD0, 0xD0, 0xD0), QColor(0x50, 0x50, 0x50))}) {
        QPalette theme = before;
        theme.setColor(QPalette::Text, text);
        theme.setColor(QPalette::Base, base);
        theme.setColor(QPalette::PlaceholderText, unreadable);
        QApplication::setPalette(theme);
        const QColor shown = QApplication::palette().color(QPalette::PlaceholderText);
        EXPECT_EQ(shown.alpha(), 255);
        EXPECT_GE(Contrast::between(shown, base), Contrast::Enough) << base.name().toStdString();
        EXPECT_LT(Contrast::between(shown, base), Contrast::between(text, base)) << base.name().toStdString();
        EXPECT_EQ(QApplication::palette().color(QPalette::Text), text);
    }
    QApplication::setPalette(before);
}
