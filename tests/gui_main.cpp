// Test entry for everything that needs Qt: one QApplication on the offscreen
// platform, so no test ever needs a display or a person.
#include <QApplication>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char **argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
