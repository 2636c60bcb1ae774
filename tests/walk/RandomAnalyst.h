#pragma once

#include "walk/Course.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <random>
#include <string>

/// An analyst who does what comes to his hand: presses, chooses, writes, turns the wheel, sizes and
/// closes windows and answers boxes, by a seed. He reaches what a user would reach: the open menu,
/// else the window that waits for an answer, else any window. Where a course is given he does what
/// stands there instead.
class RandomAnalyst : public QObject {
    Q_OBJECT

public:
    /// What happens to him: drawn anew, or carried out.
    struct Happenings {
        std::function<QString()> draw;
        std::function<void(const QString&)> carryOut;
    };

    /// `files` is the folder in which all files are that he names.
    RandomAnalyst(std::uint64_t seed, QString files, Happenings happenings);

    /// A course is given; what is left of it, and whether its next life measures.
    bool IsRepeated() const { return repeated_; }
    bool CourseEnded() const { return course_.empty(); }
    bool NextLifeMeasures();

    /// Acts every few ms as long as events run, also under a box; each fifth time something
    /// happens to him instead. Where he measures, he presses in the first of his steps what leads
    /// on, and nothing happens.
    void Begin(bool measures);

    /// The life of one who leaves at once; it is no part of the course.
    void BeginToLeave();

    /// From now on he does no more than is needed to leave the program.
    void Leave();

    /// Neither acts nor answers from now on.
    void End() { ended_ = true; }

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    /// What was done last, oldest first, one line each.
    std::string LastSteps() const { return notes_.LastSteps(); }

    int Steps() const { return steps_; }
    int BoxesSeen() const { return boxesSeen_; }

private:
    using Decide = std::optional<Step> (RandomAnalyst::*)(QWidget&);

    bool IsStraight() const { return steps_ < straightUntil_; }
    void Next();
    void Act();
    void Answer(QWidget& window);
    Step AnswerTo(QWidget& window);
    Step AnswerToFileDialog(QWidget& window);
    std::optional<Step> AnswerOfCourse(const QString& question);
    void Repeat();
    std::optional<Step> Draw(QWidget* window);
    void Take(const Step& step);
    void JudgeBox(const QString& text);
    void LeaveStep();
    QWidget* Reached();
    QWidget* AnyControl(QWidget& window, const std::function<bool(QWidget&)>& fits);

    std::optional<Step> PressButton(QWidget& window);
    std::optional<Step> ChooseEntry(QWidget& window);
    std::optional<Step> WriteText(QWidget& window);
    std::optional<Step> PressKey(QWidget& window);
    std::optional<Step> TriggerAction(QWidget& window);
    std::optional<Step> TurnWheel(QWidget& window);
    std::optional<Step> ClickAnywhere(QWidget& window);
    std::optional<Step> Resize(QWidget& window);
    std::optional<Step> Close(QWidget& window);

    std::mt19937_64 random_;
    QString files_;
    Happenings happenings_;
    CourseNotes notes_;
    std::deque<Step> course_; ///< what is still to be done of a given one
    bool repeated_;
    QElapsedTimer sinceStep_;
    QString lastBox_; ///< the text of the box that was answered last
    int stepOfLastBox_ = 0;
    int steps_ = 0; ///< actions and happenings
    int straightUntil_ = 0;
    int boxesSeen_ = 0;
    bool leaving_ = false;
    bool ended_ = false;
};
