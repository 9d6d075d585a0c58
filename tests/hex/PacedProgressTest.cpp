#include "hex/PacedProgress.h"

#include <QApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace {

/// Counts how often it is painted.
class CountingBar : public QProgressBar {
 public:
    using QProgressBar::QProgressBar;
    int paintings = 0;

 protected:
    void paintEvent(QPaintEvent* event) override {
        ++paintings;
        QProgressBar::paintEvent(event);
    }
};

struct AProgress : testing::Test {
    QWidget window;
    CountingBar* bar = new CountingBar(&window);
    PacedProgress progress{bar};

    AProgress() {
        bar->resize(200, 20);
        window.show();
        progress.show();
        QApplication::processEvents();
        bar->paintings = 0;
    }
};

}  // namespace

TEST_F(AProgress, IsPaintedTenTimesASecondAtMostAndAlwaysHasItsValue) {
    QElapsedTimer timer;
    timer.start();
    for (int percent = 0; percent <= 100; ++percent) {
        progress.setValue(percent);
        QApplication::processEvents();
        EXPECT_EQ(bar->value(), percent);
    }
    EXPECT_LE(bar->paintings, 2 * (1 + timer.elapsed() / 100));
}

TEST_F(AProgress, IsPaintedAgainWhenTheWorkHasEnded) {
    progress.setValue(50);
    progress.finish();
    QApplication::processEvents();
    EXPECT_GE(bar->paintings, 1);
    const int before = bar->paintings;
    bar->setValue(60);
    EXPECT_GT(bar->paintings, before);
    progress.hide();
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(AProgress, KnowsWhetherItsBarIsThere) {
    EXPECT_TRUE(progress.isThere());
    delete bar;
    EXPECT_FALSE(progress.isThere());
}
