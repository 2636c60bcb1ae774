#include "walk/built/BuiltWalk.h"

#include "files/RecordingNote.h"
#include "platform/System.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

namespace {

using namespace std::chrono_literals;

/// A second to a user; more in a build for tests, which works several times as long.
#ifdef NDEBUG
constexpr int longestWork_ms = 1000;
#else
constexpr int longestWork_ms = 4000;
#endif
constexpr QSize screenSize(1280, 1024);
constexpr int longestLeaving_ms = 60000;
constexpr int longestAnswering_ms = 2000;
constexpr int longestPause_ms = 3000;
/// What an analyst presses from the start to his first records.
constexpr auto longestWayToARecord = 4s;
constexpr int afterPress_ms = 300; ///< one who is on his way sees what a press does

QByteArray Bytes(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::vector<std::string> InstrumentArguments(const std::filesystem::path& log) {
    return {"--fast", "--log", log.string()};
}

std::filesystem::path LogPlace() {
    return std::filesystem::temp_directory_path() /
           ("vantrel-walk-" + std::to_string(::getpid()) + ".sent");
}

} // namespace

BuiltWalk::BuiltWalk(std::uint64_t chosen, BuiltAnalyst::Troubles troubles)
    : Bench(screenSize, InstrumentArguments(LogPlace())), seed(chosen),
      analyst_(chosen, Folder(), troubles), manager_(environment),
      hand_(reader, screenSize, Folder()), leavingHand_(reader, {0, 0}, Folder()),
      values_(LogPlace()),
      listener_(new BusListener(
          reader.BusAddress(), [this](const QString& spoken) { values_.Hear(spoken); },
          longestWork_ms)),
      notes_(qEnvironmentVariable(walk::notesVariable)), course_(walk::CourseAsked()),
      repeated_(!course_.empty()) {
    if (troubles == BuiltAnalyst::Troubles::ofLineClockAndDisk)
        clock_.emplace(Folder(), environment);
    QDir().mkdir(Folder() + "/programs");
    environment.insert("PATH", Folder() + "/programs"); // no editor, no calculator
    // Under the sanitizers, what the toolkit keeps to its end is no crash.
    environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":detect_leaks=0");
    environment.remove("QT_SCALE_FACTOR"); // places are told in pixels of the screen
    environment.insert("CUPS_SERVER", Folder() + "/no-print-server");
    const QString settings = Folder() + "/Vantrel/Vantrel.ini";
    QByteArray lines = Bytes(settings);
    lines.replace("For Measurement=2", "For Measurement=1"); // a value shown is one frame's
    QFile file(settings);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines + "[Measuring Choices]\r\nAutomatic=1\r\nPeriod=1\r\n");
    listener_->moveToThread(&listening_);
    listening_.start();
    QMetaObject::invokeMethod(
        listener_, [this] { listener_->Begin(); }, Qt::BlockingQueuedConnection);
}

BuiltWalk::~BuiltWalk() {
    QMetaObject::invokeMethod(
        listener_, [this] { listener_->End(); }, Qt::BlockingQueuedConnection);
    listening_.quit();
    listening_.wait();
    delete listener_;
    RemoveUnfinishedRecordings();
    std::filesystem::remove(LogPlace());
}

void BuiltWalk::TearDown() {}

/// Those of a walk that has failed would be offered to other programs' users.
void BuiltWalk::RemoveUnfinishedRecordings() {
    program.kill();
    program.waitForFinished();
    QDirIterator notes(QString::fromStdString(platform::SystemTemporaryFolder().string()),
                       {"4ch*.note"}, QDir::Files);
    while (notes.hasNext()) {
        const FileOpr::RecordingFiles files(
            notes.next().chopped(std::ssize(std::string_view(".note"))).toStdString());
        const auto note = FileOpr::ReadNote(files.note);
        if (!note || note->target.parent_path() != folder.Path())
            continue;
        for (const auto& each : {files.temporary, files.note, files.lock})
            std::filesystem::remove(each);
    }
}

std::string BuiltWalk::Place() const {
    return "seed " + std::to_string(seed) + ", the last steps:" + notes_.LastSteps();
}

std::string BuiltWalk::Summary() const {
    return "seed " + std::to_string(seed) + ": " + std::to_string(steps_) + " steps, " +
           std::to_string(lives_) + " lives, " + std::to_string(kills_) + " killed, " +
           std::to_string(boxes_) + " boxes, " + std::to_string(values_.ValuesShown()) +
           " values, " + std::to_string(values_.RecordsJudged()) + " records, longest wait " +
           std::to_string(listener_->LongestWait_ms()) + " ms";
}

void BuiltWalk::Live(std::chrono::milliseconds time) {
    const std::size_t heardBefore = values_.ValuesShown();
    Begin();
    Walk(time);
    heardAll_ = heardAll_ && values_.ValuesShown() > heardBefore;
    const bool kills = repeated_ ? !course_.empty() && course_.front().action == "kill"
                                 : !HasFailure() && analyst_.Below(3) == 0;
    if (!course_.empty())
        course_.pop_front(); // the end of this life
    ++lives_;
    if (kills)
        Kill();
    else
        Leave();
    unfinished_ = kills || diskFailed_;
    JudgeValues();
    if (!unfinished_)
        JudgeFiles();
}

void BuiltWalk::Begin() {
    sinceStep_.start();
    diskFailed_ = false;
    Start();
    const auto programs = reader.Programs();
    QMetaObject::invokeMethod(
        listener_, [this] { listener_->Subscribe(); }, Qt::BlockingQueuedConnection);
    if (!programs.empty())
        listener_->Watch(programs.back().service, program.processId());
    onDesktop_ = !programs.empty();
    if (!onDesktop_ || HasFailure())
        walk::Broken("the program starts again", Place());
}

void BuiltWalk::Walk(std::chrono::milliseconds time) {
    const QDeadlineTimer end(time);
    const bool measures = analyst_.Below(4) > 0;
    const QDeadlineTimer straight(measures ? longestWayToARecord : 0ms);
    while (!HasFailure() && IsAlive()) {
        const bool over = repeated_ ? course_.empty() || course_.front().action == "leave" ||
                                          course_.front().action == "kill"
                                    : end.hasExpired();
        if (over)
            return;
        Turn(!straight.hasExpired());
    }
}

void BuiltWalk::Turn(bool towardsRecord) {
    const Scene scene = Look();
    if (auto answer = analyst_.Answer(scene, false)) {
        if (IsBeingAnswered(scene))
            return QTest::qWait(50);
        JudgeBox(scene);
        if (repeated_)
            answer = AnswerOfCourse(scene).value_or(*answer);
        return Take(*answer, scene);
    }
    std::optional<Step> step;
    if (repeated_)
        step = NextOfCourse();
    else
        step = towardsRecord ? analyst_.TowardsRecord(scene) : analyst_.Act(scene);
    if (step) {
        ++steps_;
        Take(*step, scene);
    }
    if (towardsRecord && !repeated_)
        QTest::qWait(afterPress_ms);
}

/// What was answered may stand there until the program has heard of it.
bool BuiltWalk::IsBeingAnswered(const Scene& scene) {
    const bool same = scene.Reached().at == answered_;
    answered_ = scene.Reached().at;
    return same && sinceStep_.elapsed() < longestAnswering_ms;
}

/// What the course has for a box that waits, if its next step is that.
std::optional<Step> BuiltWalk::AnswerOfCourse(const Scene& scene) {
    if (course_.empty())
        return std::nullopt;
    const Step next = course_.front();
    const auto box = scene.Box();
    const bool fits =
        box ? next.action == "answer" && next.window == scene.TextOf(*box) : next.action == "file";
    if (!fits)
        return std::nullopt;
    course_.pop_front();
    return next;
}

/// Answers to boxes that do not come are left out, after a while in which they could have come.
std::optional<Step> BuiltWalk::NextOfCourse() {
    const Step next = course_.front();
    if (next.action == "answer" || next.action == "file") {
        constexpr int boxesComeWithin_ms = 1000;
        if (sinceStep_.elapsed() < next.pause_ms + boxesComeWithin_ms)
            QTest::qWait(50);
        else
            course_.pop_front();
        return std::nullopt;
    }
    if (sinceStep_.elapsed() < std::min(next.pause_ms, longestPause_ms)) {
        QTest::qWait(20);
        return std::nullopt;
    }
    course_.pop_front();
    return next;
}

void BuiltWalk::Take(const Step& step, const Scene& scene) {
    notes_.Note(step);
    sinceStep_.start();
    if (step.action == "file") {
        boxText_.clear(); // what is asked next is about another name
        values_.Forget(step.argument + ".4ch");
    }
    if (step.action == "instrument")
        DisturbTheLine(step.argument);
    else if (step.action == "disk")
        DisturbTheDisk(step.argument);
    else if (step.action == "clock")
        clock_->Set(step.argument);
    else
        hand_.Do(step, scene);
    QTest::qWait(repeated_ ? 0 : static_cast<int>(analyst_.Below(60)));
}

void BuiltWalk::DisturbTheLine(const QString& command) {
    try {
        instrument.Command(command.toStdString());
    } catch (const std::runtime_error&) { // a cable pulled twice
    }
}

void BuiltWalk::DisturbTheDisk(const QString& room) {
    if (room == "well")
        return LiftLimitOfFiles();
    LimitFilesTo(room.toULongLong());
    diskFailed_ = true;
}

void BuiltWalk::Kill() {
    notes_.Note({"kill", {}, {}, {}});
    ++kills_;
    listener_->Watch({}, 0);
    program.kill();
    program.waitForFinished();
}

void BuiltWalk::Leave() {
    notes_.Note({"leave", {}, {}, {}});
    if (diskFailed_ && program.state() == QProcess::Running)
        LiftLimitOfFiles();
    const QDeadlineTimer end(longestLeaving_ms);
    for (int turn = 0; program.state() == QProcess::Running && !end.hasExpired(); ++turn) {
        // The youngest window may keep the one waiting that has the keyboard.
        const Scene scene = turn % 2 == 0 ? Look().WithYoungestReached() : Look();
        const auto answer = analyst_.Answer(scene, true);
        const Step step = answer ? *answer : BuiltAnalyst::TowardsEnd(scene);
        leavingHand_.Do(step, scene);
        program.waitForFinished(100);
    }
    EndProgram();
}

void BuiltWalk::EndProgram() {
    listener_->Watch({}, 0);
    if (program.state() == QProcess::Running)
        walk::Broken("the program can be left", Look().Told() + "\n" + Place());
    else if (program.exitStatus() == QProcess::CrashExit || program.exitCode() != 0)
        walk::Broken("no crash", "the program has ended with " +
                                     std::to_string(program.exitCode()) + " when it was left, " +
                                     Place());
    program.kill();
    program.waitForFinished();
}
