#pragma once

#include "screens/program/Bench.h"
#include "screens/program/WindowManager.h"
#include "walk/Course.h"
#include "walk/built/BuiltAnalyst.h"
#include "walk/built/BuiltHand.h"
#include "walk/built/BusListener.h"
#include "walk/built/ProgramClock.h"
#include "walk/built/ValueWitness.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

/// The program as it has been built, on a desktop of its own, and an analyst who walks over it at
/// random or by a course that is given, while line, clock and disk fail him. Rules that are broken
/// fail the test.
class BuiltWalk : public Bench {
protected:
    BuiltWalk(std::uint64_t seed, BuiltAnalyst::Troubles troubles);
    ~BuiltWalk() override;

    /// From the start of the program to its end, which is a kill now and then; at random for about
    /// as long as this.
    void Live(std::chrono::milliseconds time);

    bool IsRepeated() const { return repeated_; }
    bool CourseEnded() const { return course_.empty(); }

    /// Who starts the program and leaves it has changed nothing.
    void JudgeSettings();

    /// After a kill or in want of room, in the program's next life.
    void JudgeFiles();

    void JudgeValues();

    /// What was done last, for people.
    std::string Place() const;

    /// For the walk's last line.
    std::string Summary() const;

    const std::uint64_t seed;

private:
    void TearDown() override; ///< the program has been left

    void RemoveUnfinishedRecordings();
    void Begin();
    void Walk(std::chrono::milliseconds time);
    void Leave();
    void Kill();
    void EndProgram();

    /// One step: an answer to what waits, else the next of the course or of the analyst.
    void Turn(bool towardsRecord);
    std::optional<Step> NextOfCourse();
    std::optional<Step> AnswerOfCourse(const Scene& scene);
    void AwaitPause(const Step& step) const;
    void Take(const Step& step, const Scene& scene);
    void DisturbTheLine(const QString& command);
    void DisturbTheDisk(const QString& room);
    void JudgeBox(const Scene& scene);
    bool IsBeingAnswered(const Scene& scene);
    bool IsAlive();
    Scene Look() const { return Scene(reader.Controls()); }

    BuiltAnalyst analyst_;
    WindowManager manager_;
    std::optional<ProgramClock> clock_; ///< where it is set
    BuiltHand hand_;
    BuiltHand leavingHand_; ///< without a pointer: windows may stand in each other's way
    ValueWitness values_;
    BusListener* listener_; ///< lives in its thread
    QThread listening_;
    CourseNotes notes_;
    std::deque<Step> course_; ///< what is still to be done of a given one
    const bool repeated_;
    bool onDesktop_ = false;  ///< the program stands on the bus
    bool heardAll_ = true;    ///< no life passed without a value
    bool diskFailed_ = false; ///< in this life
    bool unfinished_ = false; ///< what the last life has recorded may wait for the next one
    AccessibleRef answered_;  ///< the box or dialog that was answered last
    AccessibleRef box_;       ///< the message box that was judged last
    QString boxText_;
    int stepsAtBox_ = 0;
    int steps_ = 0; ///< actions and happenings, answers not counted
    int boxes_ = 0;
    int lives_ = 0;
    int kills_ = 0;
    QElapsedTimer sinceStep_;
};
