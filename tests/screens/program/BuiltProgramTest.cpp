#include "screens/program/XServer.h"
#include "support/FakePlatform.h"

#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// How much of the picture has been painted; an X server begins with black.
double PaintedShare(const QImage& picture) {
    int painted = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            painted += qGray(picture.pixel(x, y)) > 0 ? 1 : 0;
    return picture.isNull() ? 0
                            : static_cast<double>(painted) / (picture.width() * picture.height());
}

/// The program as it has been built, on an X server of its own.
class BuiltProgram : public testing::Test {
protected:
    ~BuiltProgram() override {
        program.kill();
        program.waitForFinished();
    }

    QString Folder() const { return QString::fromStdString(folder.Path().string()); }

    /// Starts the program with the device as its COM1.
    void Start(const std::string& device) {
        const fs::path ports = folder.Path() / "Vantrel" / "ports";
        fs::create_directories(ports);
        fs::create_symlink(device, ports / "com1");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", server.Display());
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("XDG_CONFIG_HOME", Folder());
        environment.insert("XDG_DATA_HOME", Folder());
        environment.insert("SLOW_DEVICE", QString::fromStdString(device));
        environment.insert("LD_PRELOAD", VANTREL_SLOW_OPEN);
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(VANTREL_PROGRAM, QStringList());
    }

    fake::TemporaryFolder folder;
    XServer server{Folder(), {640, 480}};
    QProcess program;
};

} // namespace

TEST_F(BuiltProgram, The_splash_is_seen_while_a_port_takes_four_seconds_to_open) {
    const int line = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(grantpt(line) | unlockpt(line), 0);
    QElapsedTimer started;
    started.start();
    Start(ptsname(line));
    ASSERT_TRUE(program.waitForStarted());
    constexpr int before_ms = 3500; // the port is not yet open
    double painted = 0;
    while (painted < 0.3 && started.elapsed() < before_ms) { // 500x360 of 640x480 is 0.58
        QTest::qWait(50);
        painted = PaintedShare(server.Picture());
    }
    EXPECT_GE(painted, 0.3) << "black after " << started.elapsed() << " ms";
    EXPECT_EQ(program.state(), QProcess::Running);
    close(line);
}

TEST(BuiltProgramFolder, Holds_the_text_of_every_Help) {
    const fs::path folder = fs::path(VANTREL_PROGRAM).parent_path();
    for (const char* text :
         {"SetupHlp.txt", "AcqurHlp.txt", "CalibHlp.txt", "ViewHlp.txt", "HistHlp.txt"})
        EXPECT_TRUE(fs::is_regular_file(folder / text)) << text;
}
