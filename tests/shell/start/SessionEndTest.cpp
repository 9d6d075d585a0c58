#include "shell/start/SessionEnd.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

void quit() {
    QEvent event(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &event);
}

}  // namespace

TEST(SessionEnd, EndsTheProgramWithoutClosingItsWindows) {
    QWidget window;
    window.show();
    int ends = 0;
    const SessionEnd sessionEnd([] {}, [&ends] { return ++ends > 0; });
    quit();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(window.isVisible());
}

TEST(SessionEnd, LeavesAnEndThatIsUnderWayAlone) {
    QWidget window;
    window.show();
    const SessionEnd sessionEnd([] {}, [] { return false; });
    quit();
    EXPECT_FALSE(window.isVisible());
}

TEST(SessionEnd, IsNotConcernedOnceItIsDestroyed) {
    int ends = 0;
    {
        const SessionEnd sessionEnd([] {}, [&ends] { return ++ends > 0; });
    }
    quit();
    EXPECT_EQ(ends, 0);
}
