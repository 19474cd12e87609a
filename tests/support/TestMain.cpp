#include <QApplication>

#include <gtest/gtest.h>

// Tests run inside a QApplication so that widgets and fonts are available.
// CTest sets the offscreen platform for every test; the fallback here covers
// runs started by hand.
int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
