// A random walk over the whole program, its real forms and the simulated instrument, with a line
// and a disk that fail as they like and a clock that somebody sets.

#include "files/MeasurementReader.h"
#include "platform/qt/QtPlaces.h"
#include "program/SystemServices.h"
#include "program/theMain.h"
#include "support/InstrumentProcess.h"
#include "support/Search.h"
#include "walk/RandomAnalyst.h"
#include "walk/WalkFaults.h"
#include "walk/Watchdog.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>
#include <gtest/gtest.h>

#include <iostream>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto usualLength = 40s;
constexpr int life_ms = 15000;
/// What an analyst presses from the start to his first records takes some seconds.
constexpr int stepsToARecord = 1000;
constexpr int longestLeaving_ms = 30000;
/// Of processor time, in a build with sanitizers on a slow machine; a second to a user.
constexpr auto longestWork = 4s;

class WalkPlaces : public platform::QtPlaces {
public:
    fs::path TemporaryFolder() const override { return Home() / "temporary"; }
    static fs::path Home() { return qEnvironmentVariable("VANTREL_WALK_HOME").toStdString(); }
};

QByteArray Bytes(const fs::path& path) {
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A text's outer blanks are not kept: they go when it is read.
QByteArray WithoutOuterBlanks(const QByteArray& settings) {
    QString text = QString::fromLatin1(settings);
    return text.replace(QRegularExpression(" *\x0F *"), "\x0F").toLatin1();
}

/// The lines that stand in one of the two alone.
std::string Difference(const QByteArray& before, const QByteArray& after) {
    const QList<QByteArray> old = before.split('\n'), young = after.split('\n');
    std::string text;
    for (const QByteArray& line : old)
        if (!young.contains(line))
            text += "\n- " + line.toStdString();
    for (const QByteArray& line : young)
        if (!old.contains(line))
            text += "\n+ " + line.toStdString();
    return text;
}

class Walk : public testing::Test {
protected:
    Walk() {
        fs::create_directories(places.TemporaryFolder());
        fs::create_directories(places.ConfigurationFolder());
        platform::Install(&faulty);
        instrument = std::make_unique<InstrumentProcess>(places.ConfigurationFolder().parent_path(),
                                                         std::vector<std::string>{"--fast"});
    }

    fs::path Settings() const { return places.ConfigurationFolder() / "Vantrel.ini"; }
    std::string Place() const {
        return "seed " + std::to_string(seed) + ", the last steps:" + analyst.LastSteps();
    }

    /// A project that is ready to measure, as most days have one.
    void PrepareProject() {
        fs::copy_file(VANTREL_DEMO_SETTINGS, Settings(), fs::copy_options::overwrite_existing);
        QFile port(
            QString::fromStdString((places.ConfigurationFolder() / "CommPort.conf").string()));
        EXPECT_TRUE(port.open(QIODevice::WriteOnly));
        port.write("[Startup]\nPortNumber=1\n");
    }

    /// From the start of the program to its end.
    void Live(int time_ms, int straightSteps) {
        theMain::Program program;
        program.Main();
        analyst.Begin(straightSteps, [this] { Disturb(); });
        QTimer leave;
        leave.setSingleShot(true);
        QObject::connect(&leave, &QTimer::timeout, &analyst, [this] { analyst.Leave(); });
        leave.start(time_ms);
        QTimer alive;
        QObject::connect(&alive, &QTimer::timeout, &alive, [this] { watchdog.SignOfLife(); });
        alive.start(10);
        QTimer never;
        QObject::connect(&never, &QTimer::timeout, &never, [this] {
            ADD_FAILURE() << "the program cannot be left, " << Place();
            QApplication::exit();
        });
        never.start(time_ms + longestLeaving_ms);
        QApplication::exec();
        analyst.End();
        diskInTrouble = false;
        ++lives;
    }

    /// Clock and disk only in a search that was asked for; the line always.
    void Disturb() {
        switch (isSearch ? analyst.Below(8) : 7) {
        case 0:
            SetTheClock();
            break;
        case 1:
            diskInTrouble = !diskInTrouble;
            analyst.Note(diskInTrouble ? "the disk fails now and then" : "the disk is well again");
            break;
        default:
            DisturbTheLine();
        }
    }

    /// By seconds, by an hour as summer time does, or by a day.
    void SetTheClock() {
        static const std::vector<std::chrono::seconds> changes = {0s, 7s, -7s, 1h, -1h, 24h, -24h};
        const auto ahead = changes[analyst.Below(changes.size())];
        analyst.Note("the clock is set " + QString::number(ahead.count()) + " s ahead");
        clock.Set(ahead);
    }

    void DisturbTheLine() {
        static const std::vector<std::string> happenings = {
            "unplug 0.5",        "replug", "fault silence times 1", "auto 0.3",          "auto off",
            "electrode 1 Ca",    "replug", "solution 1 water",      "solution all pH 7", "replug",
            "temperature all 20"};
        const std::string& command = happenings[analyst.Below(happenings.size())];
        analyst.Note("the instrument: " + QString::fromStdString(command));
        try {
            instrument->Command(command);
        } catch (const std::runtime_error& refused) { // a cable pulled twice
            analyst.Note(refused.what());
        }
    }

    /// Whole, and numbered from one on without a gap.
    void JudgeFiles() {
        for (const auto& entry : fs::directory_iterator(WalkPlaces::Home())) {
            if (entry.path().extension() != ".4ch")
                continue;
            const auto file = FileOpr::ReadMeasurementFile(entry.path());
            EXPECT_TRUE(file.complete) << entry.path() << ", " << Place();
            records = std::max(records, file.records.size());
            for (std::size_t i = 1; i < file.records.size(); ++i)
                EXPECT_EQ(file.records[i].number, file.records[i - 1].number + 1) << Place();
        }
    }

    /// Who starts the program and leaves it has changed nothing.
    void JudgeSettings() {
        const QByteArray before = WithoutOuterBlanks(Bytes(Settings()));
        Live(0, 0);
        const QByteArray after = WithoutOuterBlanks(Bytes(Settings()));
        EXPECT_TRUE(after == before) << Difference(before, after) << "\n" << Place();
    }

    const unsigned long seed = search::Seed();
    const bool isSearch = search::Length(usualLength) > usualLength;
    WalkPlaces places;
    theMain::SystemServices services{places};
    WalkClock clock{platform::Current().clock};
    WalkFiles files{platform::Current().files,
                    [this] { return diskInTrouble && analyst.Below(3) == 0; }};
    const platform::Services faulty = [this] {
        const platform::Services& all = platform::Current();
        return platform::Services{all.dialogs,   all.desktop, clock, all.profile,
                                  all.userStore, all.places,  files, all.printing};
    }();
    std::unique_ptr<InstrumentProcess> instrument;
    RandomAnalyst analyst{seed, QString::fromStdString(WalkPlaces::Home().string())};
    Watchdog watchdog{longestWork,
                      [this] { std::cerr << "the program stands still, " << Place() << '\n'; }};
    bool diskInTrouble = false;
    int lives = 0;
    std::size_t records = 0;
};

} // namespace

TEST_F(Walk, Whatever_is_pressed_the_program_goes_on_and_can_be_left_and_started_again) {
    const auto begin = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - begin < search::Length(usualLength) &&
           !HasFailure()) {
        const bool measures = analyst.Below(3) > 0;
        if (measures)
            PrepareProject();
        Live(life_ms, measures ? stepsToARecord : 0);
        JudgeFiles();
        JudgeSettings();
    }
    std::cout << "seed " << seed << ": " << analyst.Steps() << " steps, " << lives << " lives, "
              << analyst.BoxesSeen() << " boxes, " << records << " records, longest gap "
              << watchdog.LongestGap().count() << " ms\n";
    EXPECT_GT(lives, 1);
    EXPECT_GT(analyst.BoxesSeen(), 0);
    if (isSearch) { // in a short walk a busy machine may hinder him
        EXPECT_GT(records, 0U) << "he never came to a record";
    }
}
