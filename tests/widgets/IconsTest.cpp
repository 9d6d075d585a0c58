#include "widgets/Contrast.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

namespace {

int strongestAlpha(const QImage& image) {
    int strongest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            strongest = qMax(strongest, qAlpha(image.pixel(x, y)));
    }
    return strongest;
}

}  // namespace

TEST(Icons, AreFaintWhereTheyCannotBeChosen) {
    const QIcon icon = Icons::named("selectline");
    const int normal = strongestAlpha(icon.pixmap(32, QIcon::Normal).toImage());
    const int disabled = strongestAlpha(icon.pixmap(32, QIcon::Disabled).toImage());
    EXPECT_GT(normal, 200);
    EXPECT_GT(disabled, 50);
    EXPECT_LT(disabled, normal / 2);
}

namespace {

/// The minimum contrast between an enabled picture and the background.
double faintestOn(const QColor& ground, const QImage& image) {
    double faintest = 21;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const QColor colour = image.pixelColor(x, y); colour.alpha() == 255)
                faintest = std::min(faintest, Contrast::between(colour, ground));
        }
    }
    return faintest;
}

/// Sets the application's window colour while it exists.
class WindowColour {
 public:
    explicit WindowColour(const QColor& colour) {
        QPalette palette = m_before;
        palette.setColor(QPalette::Window, colour);
        QApplication::setPalette(palette);
    }
    ~WindowColour() { QApplication::setPalette(m_before); }

 private:
    QPalette m_before = QApplication::palette();
};

}  // namespace

TEST(Icons, AreSeenOnLightAndOnDarkWindows) {
    QStringList names;
    for (QDirIterator files(u":/icons"_qs); files.hasNext();) {
        files.next();
        names << files.fileInfo().completeBaseName();
    }
    ASSERT_GT(names.size(), 40);
    names.removeOne(u"quillmark"_qs);
    for (const QString& name : names) {
        const QIcon icon = Icons::named(name.toLatin1().constData());
        for (const QColor& ground : {QColor(0xEF, 0xEF, 0xEF), QColor(0x35, 0x35, 0x35)}) {
            const WindowColour shown(ground);
            const QImage image = icon.pixmap(64).toImage();
            EXPECT_GT(strongestAlpha(image), 250) << name.toStdString();
            EXPECT_GE(faintestOn(ground, image), Contrast::Enough) << name.toStdString() << ' ' << ground.value();
        }
    }
}

TEST(Icons, OfSelectedRowsHaveTheColourOfTheirText) {
    const QColor text = QApplication::palette().color(QPalette::HighlightedText);
    const QImage image = Icons::named("doc-normal").pixmap(64, QIcon::Selected).toImage();
    int seen = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.alpha() < 255)
                continue;
            ++seen;
            ASSERT_EQ(colour.rgb(), text.rgb());
        }
    }
    EXPECT_GT(seen, 100);
}

TEST(Icons, OfAnUnknownNameAreNone) {
    EXPECT_TRUE(Icons::named("no such picture").isNull());
}
