#include "Tests/Platform/Starts.h"
#include "Tests/Platform/TrayRoles.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstring>

// Every test has an application object; without a display it is one that shows nothing, and the tests that need one say
// so. Listing the tests starts nothing.
int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--instance") == 0) {
        QStringList arguments;
        for (int i = 2; i < argc; ++i) {
            arguments << QString::fromUtf8(argv[i]);
        }
        return tunedeck::test::runInstance(arguments);
    }
    if (argc > 1 && std::strcmp(argv[1], "--status-item") == 0) {
        return tunedeck::test::runStatusItem(argc, argv);
    }
    if (argc > 1 && std::strcmp(argv[1], "--tray-host") == 0) {
        return tunedeck::test::runTrayHost(argc, argv);
    }
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
