#include <QApplication>
#include <QFont>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef TOLLWICK_TEST_FONTS
    qputenv("QT_QPA_FONTDIR", TOLLWICK_TEST_FONTS);
#endif
    QApplication application(argc, argv);
#ifdef TOLLWICK_TEST_FONTS
    QFont font = QApplication::font(); // wider than the one that Windows uses at 9 points
    font.setPointSize(8);
    QApplication::setFont(font);
#endif
    // A test that closes the console goes on; the end of the process is injected.
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
