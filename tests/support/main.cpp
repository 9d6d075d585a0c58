// The main function of all test programs: sets up a temporary home and runs Qt without a display.

#include "support/TemporaryHome.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const TemporaryHome home;
    // Also needed when the test runner only lists the tests, because ctest does not set its environment then.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
