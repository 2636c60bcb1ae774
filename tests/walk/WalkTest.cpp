// A random walk over the whole program, its real forms and the simulated instrument, with a line
// and a disk that fail as they like and a clock that somebody sets.

#include "files/MeasurementReader.h"
#include "platform/qt/QtPlaces.h"
#include "program/SystemServices.h"
#include "program/theMain.h"
#include "support/InstrumentProcess.h"
#include "support/Search.h"
#include "walk/RandomAnalyst.h"
#include "walk/SettingsRule.h"
#include "walk/WalkFaults.h"
#include "walk/Watchdog.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <gtest/gtest.h>

#include <iostream>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto usualLength = 40s;
constexpr int life_ms = 15000;
constexpr int longestLeaving_ms = 30000;
/// Of processor time, in a build with sanitizers on a slow machine; a second to a user.
constexpr auto longestWork = 4s;

class WalkPlaces : public platform::QtPlaces {
public:
    fs::path TemporaryFolder() const override { return Home() / "temporary"; }
    static fs::path Home() { return qEnvironmentVariable("VANTREL_WALK_HOME").toStdString(); }
};

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

    /// From the start of the program to its end. Without a time, he leaves at once.
    void Live(int time_ms, bool measures) {
        theMain::Program program;
        program.Main();
        if (time_ms > 0)
            analyst.Begin(measures);
        else
            analyst.BeginToLeave();
        QTimer leave;
        leave.setSingleShot(true);
        QObject::connect(&leave, &QTimer::timeout, &analyst, [this] { analyst.Leave(); });
        if (!analyst.IsRepeated())
            leave.start(time_ms);
        QTimer alive;
        QObject::connect(&alive, &QTimer::timeout, &alive, [this] { watchdog.SignOfLife(); });
        alive.start(10);
        QTimer never;
        QObject::connect(&never, &QTimer::timeout, &never, [this] {
            walk::Broken("the program can be left", Place());
            QApplication::exit();
        });
        never.start(time_ms + longestLeaving_ms);
        QApplication::exec();
        analyst.End();
        diskInTrouble = false;
        ++lives;
    }

    /// Clock and disk only in a search that was asked for; the line always.
    QString DrawHappening() {
        static const QStringList clocks = {"0", "7", "-7", "3600", "-3600", "86400", "-86400"};
        static const QStringList commands = {
            "unplug 0.5",        "replug", "fault silence times 1", "auto 0.3",          "auto off",
            "electrode 1 Ca",    "replug", "solution 1 water",      "solution all pH 7", "replug",
            "temperature all 20"};
        const auto any = [this](const QStringList& list) {
            return list[static_cast<int>(analyst.Below(static_cast<std::size_t>(list.size())))];
        };
        switch (isSearch ? analyst.Below(8) : 7) {
        case 0:
            return "clock " + any(clocks);
        case 1:
            return diskInTrouble ? "disk well" : "disk fails";
        default:
            return "instrument " + any(commands);
        }
    }

    /// The clock is set by seconds, by an hour as summer time does, or by a day; the disk fails now
    /// and then, until it is well again.
    void CarryOut(const QString& happening) {
        const QString rest = happening.section(' ', 1);
        if (happening.startsWith("clock"))
            clock.Set(std::chrono::seconds(rest.toInt()));
        else if (happening.startsWith("disk"))
            diskInTrouble = rest == "fails";
        else
            Command(rest.toStdString());
    }

    void Command(const std::string& command) {
        try {
            instrument->Command(command);
        } catch (const std::runtime_error&) { // a cable pulled twice
        }
    }

    /// Whole, and numbered from one on without a gap.
    void JudgeFiles() {
        for (const auto& entry : fs::directory_iterator(WalkPlaces::Home())) {
            if (entry.path().extension() != ".4ch")
                continue;
            const auto file = FileOpr::ReadMeasurementFile(entry.path());
            records = std::max(records, file.records.size());
            bool whole = file.complete;
            for (std::size_t i = 1; i < file.records.size(); ++i)
                whole = whole && file.records[i].number == file.records[i - 1].number + 1;
            if (!whole)
                walk::Broken("files are whole and numbered without a gap",
                             entry.path().string() + ", " + Place());
        }
    }

    /// Who starts the program and leaves it has changed nothing.
    void JudgeSettings() {
        const QByteArray before = walk::SettingsIn(QString::fromStdString(Settings().string()));
        Live(0, false);
        const QByteArray after = walk::SettingsIn(QString::fromStdString(Settings().string()));
        if (!walk::AreKept(before, after))
            walk::Broken("settings that nobody touched keep their bytes",
                         walk::Difference(before, after) + "\n" + Place());
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
    RandomAnalyst analyst{seed,
                          QString::fromStdString(WalkPlaces::Home().string()),
                          {[this] { return DrawHappening(); },
                           [this](const QString& happening) { CarryOut(happening); }}};
    Watchdog watchdog{longestWork, [this] {
                          walk::TellRule("no standstill");
                          std::cerr << "the program stands still, " << Place() << '\n';
                      }};
    bool diskInTrouble = false;
    int lives = 0;
    std::size_t records = 0;
};

} // namespace

TEST_F(Walk, Whatever_is_pressed_the_program_goes_on_and_can_be_left_and_started_again) {
    const auto begin = std::chrono::steady_clock::now();
    const auto goesOn = [&] {
        return analyst.IsRepeated()
                   ? !analyst.CourseEnded()
                   : std::chrono::steady_clock::now() - begin < search::Length(usualLength);
    };
    while (goesOn() && !HasFailure()) {
        const bool measures =
            analyst.IsRepeated() ? analyst.NextLifeMeasures() : analyst.Below(3) > 0;
        if (measures)
            PrepareProject();
        Live(life_ms, measures);
        JudgeFiles();
        JudgeSettings();
    }
    std::cout << "seed " << seed << ": " << analyst.Steps() << " steps, " << lives << " lives, "
              << analyst.BoxesSeen() << " boxes, " << records << " records, longest gap "
              << watchdog.LongestGap().count() << " ms\n";
    EXPECT_GT(lives, 1);
    EXPECT_TRUE(analyst.IsRepeated() || analyst.BoxesSeen() > 0);
    if (isSearch && !analyst.IsRepeated()) { // in a short walk a busy machine may hinder him
        EXPECT_GT(records, 0U) << "he never came to a record";
    }
}
