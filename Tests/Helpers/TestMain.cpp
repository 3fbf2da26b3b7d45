#include <QCoreApplication>

#include <gtest/gtest.h>

/// The main of every test program that has none of its own.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
