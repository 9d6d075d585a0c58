// The one main of every test program: a home of its own, a screen that is not there.

#include "support/TemporaryHome.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const TemporaryHome home;
    // Also while the runner only asks for the names of the tests, where ctest's environment does not reach.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
