#include "screens/program/Bench.h"

#include "platform/System.h"
#include "screens/desktop/EndWithTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace {

constexpr int longestStart_ms = 20000;
/// A press lasts 100 ms; one that comes meanwhile begins it anew.
constexpr int pressed_ms = 300;

void Write(const QString& name, const QByteArray& text) {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(text);
}

/// Nothing of the computer's own desktop and nothing of its user is reached.
QProcessEnvironment EnvironmentOf(const QString& folder, const QString& display) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", display);
    environment.insert("QT_QPA_PLATFORM", "xcb");
    for (const char* place : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        environment.insert(place, folder);
    const QString runtime = folder + "/run";
    QDir().mkdir(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    environment.insert("XDG_RUNTIME_DIR", runtime);
    for (const char* other : {"DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS",
                              "NO_AT_BRIDGE", "QT_ACCESSIBILITY"})
        environment.remove(other);
    return environment;
}

std::vector<std::unique_ptr<platform::FileLock>> LocksOfRecordings() {
    const auto files = platform::MakeFileStore();
    const QDir folder(QString::fromStdString(platform::SystemTemporaryFolder().string()));
    std::vector<std::unique_ptr<platform::FileLock>> locks;
    for (const QFileInfo& each : folder.entryInfoList({"4ch*.lock"}, QDir::Files))
        if (each.isWritable()) // else it is another user's, and offered to him alone
            locks.push_back(files->TryLock(each.filePath().toStdString()));
    return locks;
}

} // namespace

Bench::Bench(QSize screen, const std::vector<std::string>& instrumentArguments)
    : othersRecordings(LocksOfRecordings()), server(Folder(), screen),
      environment(EnvironmentOf(Folder(), server.Display())), bus(environment),
      reader(bus.Address()), instrument(folder.Path(), instrumentArguments) {
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
        environment.insert(name, bus.Address());
    const QString settings = Folder() + "/Vantrel/";
    QDir().mkpath(settings);
    EXPECT_TRUE(QFile::copy(VANTREL_DEMO_SETTINGS, settings + "Vantrel.ini"));
    Write(settings + "CommPort.conf", "[Startup]\nPortNumber=1\n");
}

Bench::~Bench() {
    program.kill();
    program.waitForFinished();
}

void Bench::TearDown() {
    constexpr int longestExit_ms = 20000;
    reader.Press("push button", "Exit");
    Confirm("Are you sure you want to exit?");
    EXPECT_TRUE(program.waitForFinished(longestExit_ms)) << "the program does not end";
}

void Bench::LimitFilesTo(rlim_t bytes) const {
    const rlimit limit{bytes, RLIM_INFINITY};
    EXPECT_EQ(::prlimit(static_cast<pid_t>(program.processId()), RLIMIT_FSIZE, &limit, nullptr), 0);
}

void Bench::Confirm(const QString& question) const {
    reader.AwaitName("label", QRegularExpression::escape(question));
    // Another question may be open at the same time: a recording that another program left behind.
    bool asked = false;
    for (const SpokenControl& each : reader.Controls()) {
        asked = asked || each.name == question;
        if (asked && each.name == "Yes")
            reader.Press(each);
    }
}

void Bench::Start(const QStringList& arguments) {
    program.setProcessEnvironment(environment);
    EndWithTest(program);
    program.start(VANTREL_PROGRAM, arguments);
    ASSERT_TRUE(program.waitForStarted()) << program.errorString().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([this] { return LeaveSplash(); }, longestStart_ms));
}

/// What is pressed while the program starts is pressed in vain: false until its window is there.
bool Bench::LeaveSplash() const {
    for (const SpokenControl& each : reader.Controls()) {
        if (each.role == "frame" && each.name.endsWith(": Setup"))
            return true;
        if (each.name == "Close this window and go on") {
            reader.Press(each);
            QTest::qWait(pressed_ms);
        }
    }
    return false;
}

void Bench::AddSettings(const QByteArray& lines) const {
    QFile file(Folder() + "/Vantrel/Vantrel.ini");
    EXPECT_TRUE(file.open(QIODevice::Append));
    file.write(lines);
}

void Bench::Measure() const {
    reader.Press("push button", "Measure >");
    reader.AwaitName("label", "Channel 1 potential in mV: -?\\d+\\.\\d");
}

void Bench::Record(const QString& file) const {
    reader.Press("push button", "Record");
    reader.Write("File name:", file);
    reader.Press("push button", "Save");
}
