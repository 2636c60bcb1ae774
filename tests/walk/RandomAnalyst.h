#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

/// An analyst who does what comes to his hand: presses, chooses, writes, turns the wheel, sizes and
/// closes windows and answers boxes, by a seed. He reaches what a user would reach: the open menu,
/// else the window that waits for an answer, else any window.
class RandomAnalyst : public QObject {
    Q_OBJECT

public:
    /// `files` is the folder in which all files are that he names.
    RandomAnalyst(std::uint64_t seed, QString files);

    /// Acts every few ms as long as events run, also under a box; each fifth time something
    /// happens to him instead. In the first of his steps he presses what leads on, and nothing
    /// happens.
    void Begin(int straightSteps, const std::function<void()>& disturb);

    /// From now on he does no more than is needed to leave the program.
    void Leave() { leaving_ = true; }

    /// Neither acts nor answers from now on.
    void End() { ended_ = true; }

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    /// What was done last, oldest first, one line each.
    std::string LastSteps() const;
    void Note(const QString& step);

    int Steps() const { return steps_; }
    int BoxesSeen() const { return boxesSeen_; }

private:
    using Action = void (RandomAnalyst::*)(QWidget&);

    bool IsStraight() const { return steps_ < straightUntil_; }
    void Next();
    void Act();
    void ActIn(QWidget& window);
    bool Answer(QWidget& window);
    void AnswerMessage(QWidget& window);
    void AnswerFileDialog(QWidget& window);
    void LeaveStep();
    QWidget* Reached();
    QWidget* AnyControl(QWidget& window, const std::function<bool(QWidget&)>& fits);

    void PressButton(QWidget& window);
    void ChooseEntry(QWidget& window);
    void WriteText(QWidget& window);
    void PressKey(QWidget& window);
    void TriggerAction(QWidget& window);
    void TurnWheel(QWidget& window);
    void ClickAnywhere(QWidget& window);
    void Resize(QWidget& window);
    void Close(QWidget& window);

    std::mt19937_64 random_;
    QString files_;
    std::function<void()> disturb_;
    std::deque<QString> lastSteps_;
    QString lastBox_; ///< the text of the box that was answered last
    int stepOfLastBox_ = 0;
    int steps_ = 0; ///< actions and disturbances
    int straightUntil_ = 0;
    int boxesSeen_ = 0;
    bool leaving_ = false;
    bool ended_ = false;
};
