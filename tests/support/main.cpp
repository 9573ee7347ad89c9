// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#ifdef KALVO_TEST_SCREENS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif
#include <QStandardPaths>

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The person who runs the tests may have a program folder of their own, and data that no test may touch.
    qunsetenv("KALVO_HOME");
    qunsetenv("KALVO_HEC1");
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    Application app(argc, argv);
    return RUN_ALL_TESTS();
}
