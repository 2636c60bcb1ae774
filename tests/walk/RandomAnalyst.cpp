#include "walk/RandomAnalyst.h"

#include "walk/FormHand.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>

#include <array>

namespace {

/// What an analyst presses from the start to his first records takes some seconds.
constexpr int stepsToARecord = 1000;
constexpr int boxesComeWithin_ms = 300;

/// The buttons of a day's work, the splash's among them; he takes to them more than to others.
bool LeadsOn(const QString& caption) {
    static const QStringList captions = {"&OK",   "&Measure >", "&Record", "&Start", "Re&port",
                                         "&Read", "Continue",   "&Next >", "&Finish"};
    return captions.contains(caption);
}

/// He leaves the program when it is time for it, not before.
QAbstractButton* AnswerButton(const QMessageBox& box, bool leaving, std::size_t which) {
    const bool leavesAll = box.text() == "Are you sure you want to exit?";
    if (leaving && box.button(QMessageBox::Yes) != nullptr)
        return box.button(QMessageBox::Yes);
    if (leavesAll && box.button(QMessageBox::No) != nullptr)
        return box.button(QMessageBox::No);
    const auto buttons = box.buttons();
    return buttons.at(static_cast<int>(which % static_cast<std::size_t>(buttons.size())));
}

bool EndsLife(const Step& step) {
    return step.action == "leave" || step.action == "start";
}

} // namespace

RandomAnalyst::RandomAnalyst(std::uint64_t seed, QString files, Happenings happenings)
    : random_(seed), files_(std::move(files)), happenings_(std::move(happenings)),
      notes_(qEnvironmentVariable(walk::notesVariable)), course_(walk::CourseAsked()),
      repeated_(!course_.empty()) {}

/// Of the life before, what was done after it was time to leave is passed over.
bool RandomAnalyst::NextLifeMeasures() {
    while (!course_.empty() && course_.front().action != "start")
        course_.pop_front();
    if (course_.empty())
        return false;
    const bool measures = course_.front().argument == "measures";
    course_.pop_front();
    return measures;
}

void RandomAnalyst::Begin(bool measures) {
    notes_.Note({"start", {}, {}, measures ? "measures" : "looks"});
    straightUntil_ = steps_ + (measures ? stepsToARecord : 0);
    leaving_ = false;
    ended_ = false;
    sinceStep_.start();
    Next();
}

void RandomAnalyst::BeginToLeave() {
    leaving_ = true;
    ended_ = false;
    Next();
}

void RandomAnalyst::Leave() {
    if (!leaving_)
        notes_.Note({"leave", {}, {}, {}});
    leaving_ = true;
}

/// The next step is due before this one is taken: one that opens a box returns when it is answered.
void RandomAnalyst::Next() {
    if (ended_)
        return;
    QTimer::singleShot(static_cast<int>(Below(12)), this, [this] {
        Next();
        if (!ended_)
            Act();
    });
}

void RandomAnalyst::Act() {
    const QPointer<QWidget> window = Reached();
    if (window && FormHand::QuestionOf(*window))
        return Answer(*window);
    if (leaving_) {
        ++steps_;
        return LeaveStep();
    }
    if (repeated_)
        return Repeat();
    ++steps_;
    if (const auto step = Draw(window))
        Take(*step);
}

std::optional<Step> RandomAnalyst::Draw(QWidget* window) {
    // What an analyst does often stands more than once.
    static constexpr std::array<Decide, 20> decisions = {
        &RandomAnalyst::PressButton,   &RandomAnalyst::PressButton, &RandomAnalyst::PressButton,
        &RandomAnalyst::PressButton,   &RandomAnalyst::PressButton, &RandomAnalyst::PressButton,
        &RandomAnalyst::ChooseEntry,   &RandomAnalyst::ChooseEntry, &RandomAnalyst::ChooseEntry,
        &RandomAnalyst::WriteText,     &RandomAnalyst::WriteText,   &RandomAnalyst::WriteText,
        &RandomAnalyst::PressKey,      &RandomAnalyst::PressKey,    &RandomAnalyst::TriggerAction,
        &RandomAnalyst::TriggerAction, &RandomAnalyst::TurnWheel,   &RandomAnalyst::ClickAnywhere,
        &RandomAnalyst::Resize,        &RandomAnalyst::Close};
    if (IsStraight() && window != nullptr)
        return PressButton(*window);
    if (Below(5) == 0)
        return Step{"happens", {}, {}, happenings_.draw()};
    return window == nullptr ? std::nullopt : (this->*decisions[Below(decisions.size())])(*window);
}

void RandomAnalyst::Take(const Step& step) {
    notes_.Note(step);
    sinceStep_.start();
    if (step.action == "happens")
        happenings_.carryOut(step.argument);
    else
        FormHand::Do(step, files_);
}

/// Answers to boxes that do not come are left out, after a while in which they could have come.
void RandomAnalyst::Repeat() {
    if (course_.empty() || EndsLife(course_.front()))
        return Leave();
    const Step next = course_.front();
    const bool answers = next.action == "answer";
    if (sinceStep_.elapsed() < next.pause_ms + (answers ? boxesComeWithin_ms : 0))
        return;
    course_.pop_front();
    if (answers)
        return;
    ++steps_;
    Take(next);
}

QWidget* RandomAnalyst::Reached() {
    if (QWidget* const foremost = FormHand::Foremost())
        return foremost;
    const auto windows = FormHand::ShownWindows();
    return windows.empty() ? nullptr : windows[Below(windows.size())];
}

void RandomAnalyst::Answer(QWidget& window) {
    const QString question = *FormHand::QuestionOf(window);
    if (qobject_cast<QMessageBox*>(&window) != nullptr)
        JudgeBox(question);
    else if (qobject_cast<QFileDialog*>(&window) != nullptr)
        lastBox_.clear(); // what it asks next is about another name
    Take(AnswerOfCourse(question).value_or(AnswerTo(window)));
}

/// What the course has for this question, if that is its next step.
std::optional<Step> RandomAnalyst::AnswerOfCourse(const QString& question) {
    if (leaving_ || course_.empty() || course_.front().action != "answer" ||
        course_.front().window != question)
        return std::nullopt;
    const Step answer = course_.front();
    course_.pop_front();
    return answer;
}

Step RandomAnalyst::AnswerTo(QWidget& window) {
    const QString question = *FormHand::QuestionOf(window);
    if (const auto* const box = qobject_cast<QMessageBox*>(&window))
        return {"answer", question, AnswerButton(*box, leaving_, Below(8))->text(), {}};
    if (qobject_cast<QFileDialog*>(&window) != nullptr)
        return AnswerToFileDialog(window);
    return {"answer", question, Below(2) == 0 ? "OK" : "Cancel", QString::number(Below(2000))};
}

Step RandomAnalyst::AnswerToFileDialog(QWidget& window) {
    const bool folder = static_cast<QFileDialog&>(window).fileMode() == QFileDialog::Directory;
    if (leaving_ || Below(3) == 0 || folder)
        return {"answer", window.windowTitle(), {}, {}};
    return {"answer", window.windowTitle(), {}, "walk" + QString::number(Below(3))};
}

void RandomAnalyst::JudgeBox(const QString& text) {
    if (text == lastBox_ && steps_ == stepOfLastBox_)
        walk::Broken("no box comes twice without something done", text.toStdString() + LastSteps());
    ++boxesSeen_;
    lastBox_ = text;
    stepOfLastBox_ = steps_;
}

void RandomAnalyst::LeaveStep() {
    const auto windows = FormHand::ShownWindows();
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
    } else if (QWidget* const modal = QApplication::activeModalWidget()) {
        modal->close();
    } else if (!windows.empty()) {
        QWidget& window = *windows[Below(windows.size())];
        if (auto* const button = window.findChild<QAbstractButton*>("cmdCommand1"))
            button->click(); // the splash's
        else
            window.close();
    }
}

QWidget* RandomAnalyst::AnyControl(QWidget& window, const std::function<bool(QWidget&)>& fits) {
    std::vector<QWidget*> found;
    for (QWidget* each : FormHand::ControlsIn(window))
        if (fits(*each))
            found.push_back(each);
    return found.empty() ? nullptr : found[Below(found.size())];
}

std::optional<Step> RandomAnalyst::PressButton(QWidget& window) {
    const bool goesOn = IsStraight() || Below(3) > 0;
    const QWidget* const button = AnyControl(window, [goesOn](QWidget& each) {
        const auto* const found = qobject_cast<QAbstractButton*>(&each);
        return found != nullptr && (!goesOn || LeadsOn(found->text()));
    });
    if (button == nullptr)
        return std::nullopt;
    return Step{"press", FormHand::NameOf(window), FormHand::NameOf(window, *button), {}};
}

std::optional<Step> RandomAnalyst::ChooseEntry(QWidget& window) {
    const auto* const box = qobject_cast<QComboBox*>(AnyControl(
        window, [](QWidget& each) { return qobject_cast<QComboBox*>(&each) != nullptr; }));
    if (box == nullptr || box->count() == 0)
        return std::nullopt;
    const int entry = static_cast<int>(Below(static_cast<std::size_t>(box->count())));
    return Step{"choose", FormHand::NameOf(window), FormHand::NameOf(window, *box),
                box->itemText(entry)};
}

std::optional<Step> RandomAnalyst::WriteText(QWidget& window) {
    static const QStringList texts = {
        "",      "1",      "10",
        "100",   "4.01",   "7.00",
        "10.01", "0,5",    "-3",
        "1e9",   "abc",    "\xC3\xA4 \xCE\xA9",
        "2",     "0",      "60",
        "9999",  "0.001",  "7 b",
        "=1+",   "sample", "a very long comment of no use, on and on"};
    const auto* const edit = qobject_cast<QLineEdit*>(AnyControl(
        window, [](QWidget& each) { return qobject_cast<QLineEdit*>(&each) != nullptr; }));
    if (edit == nullptr || edit->isReadOnly())
        return std::nullopt;
    return Step{Below(2) == 0 ? "enter" : "write", FormHand::NameOf(window),
                FormHand::NameOf(window, *edit),
                texts.at(static_cast<int>(Below(static_cast<std::size_t>(texts.size()))))};
}

std::optional<Step> RandomAnalyst::PressKey(QWidget& window) {
    static constexpr std::array<Qt::Key, 14> keys = {
        Qt::Key_Tab,    Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Space, Qt::Key_Up,
        Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Home,  Qt::Key_End,
        Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete, Qt::Key_F3};
    const Qt::Key key = keys[Below(keys.size())];
    return Step{"key", FormHand::NameOf(window), {}, QString::number(key)};
}

std::optional<Step> RandomAnalyst::TriggerAction(QWidget& window) {
    const auto found = FormHand::EntriesOf(window);
    if (found.empty())
        return std::nullopt;
    return Step{"menu", FormHand::NameOf(window), {}, found[Below(found.size())]->text()};
}

std::optional<Step> RandomAnalyst::TurnWheel(QWidget& window) {
    const QWidget* const under = AnyControl(window, [](QWidget&) { return true; });
    if (under == nullptr)
        return std::nullopt;
    return Step{"wheel", FormHand::NameOf(window), FormHand::NameOf(window, *under),
                Below(2) == 0 ? "120" : "-120"};
}

std::optional<Step> RandomAnalyst::ClickAnywhere(QWidget& window) {
    const QWidget* const under = AnyControl(window, [](QWidget&) { return true; });
    if (under == nullptr || under->width() < 1 || under->height() < 1)
        return std::nullopt;
    const auto x = Below(static_cast<std::size_t>(under->width()));
    const auto y = Below(static_cast<std::size_t>(under->height()));
    return Step{"click", FormHand::NameOf(window), FormHand::NameOf(window, *under),
                QString("%1 %2").arg(x).arg(y)};
}

std::optional<Step> RandomAnalyst::Resize(QWidget& window) {
    const QSize most = window.screen()->availableSize() * 0.9;
    const auto width = 300 + Below(static_cast<std::size_t>(most.width() - 300));
    const auto height = 300 + Below(static_cast<std::size_t>(most.height() - 300));
    return Step{"size", FormHand::NameOf(window), {}, QString("%1 %2").arg(width).arg(height)};
}

std::optional<Step> RandomAnalyst::Close(QWidget& window) {
    return Below(4) == 0 ? std::optional<Step>({"close", FormHand::NameOf(window), {}, {}})
                         : std::nullopt;
}
