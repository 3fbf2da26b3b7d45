#include <QCoreApplication>

#include <gtest/gtest.h>

/// The main() of the test programs that don't define one.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
