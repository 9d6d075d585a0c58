#include "platform/Icons.h"

#include <QIcon>
#include <QImage>

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

TEST(Icons, OfAnUnknownNameAreNone) {
    EXPECT_TRUE(Icons::named("no such picture").isNull());
}
