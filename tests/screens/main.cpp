#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
#ifdef Q_OS_WIN // without a display Qt chooses any font, and rounds letters as DirectWrite does not
    QFont font("DejaVu Sans", 9);
    font.setHintingPreference(QFont::PreferNoHinting);
    QApplication::setFont(font);
#endif
    // A test closes its last window and goes on.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
