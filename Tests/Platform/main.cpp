#include "Tests/Platform/Roles.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <string_view>

// Creates the application object for all tests, offscreen where there is no display, but not to list the tests.
int main(int argc, char** argv) {
    if (argc > 1 && !std::string_view(argv[1]).starts_with("--gtest")) {
        return tunedeck::test::runRole(argc, argv);
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
