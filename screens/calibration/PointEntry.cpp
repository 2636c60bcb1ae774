#include "screens/calibration/PointEntry.h"

#include "app/Mcommon.h"
#include "screens/calibration/CalibrationChoices.h"
#include "screens/calibration/StandardFields.h"
#include "screens/controls/Wiring.h"

#include <utility>

PointEntry::PointEntry(CalibrationSession& session, PointReading& reading, Screen screen)
    : session_(session), reading_(reading), screen_(std::move(screen)) {}

PointEntry::~PointEntry() = default;

void PointEntry::Wire(EventGuard& guard) {
    const Wiring wire(*this, guard, screen_.name);
    const auto field = [&](auto signal, const char* event, auto handler) {
        wire(&screen_.fields, signal, (screen_.fieldsName + event).c_str(), handler);
    };
    field(&StandardFields::Entered, "_GotFocus", &PointEntry::Enter);
    field(&StandardFields::Left, "_LostFocus", &PointEntry::Leave);
    field(&StandardFields::Changed, "_Change", &PointEntry::Change);
    wire(&screen_.choices, &CalibrationChoices::PointCountChosen, "cboCalibPtrs_Click",
         &PointEntry::ChoosePointCount);
    wire(&reading_.tmrRead, &QTimer::timeout, "tmrRead_Timer", &PointEntry::Tick);
}

void PointEntry::Enter(std::size_t point) {
    session_.SetCurrentPoint(point);
    screen_.show();
}

void PointEntry::Leave() {
    if (screen_.prompts)
        screen_.fields.ShowPrompts(session_);
}

void PointEntry::Change(std::size_t point) {
    session_.Touch();
    session_.SetCurrentPoint(point); // a tool sets a text without bringing the cursor there
    if (screen_.prompts && !screen_.fields(point).hasFocus())
        screen_.fields.ShowPrompts(session_);
    screen_.show();
}

void PointEntry::ChoosePointCount() {
    if (!session_.IsReading())
        session_.SetPointCount(screen_.choices.PointCount());
    screen_.show(); // also puts back what a tool has changed meanwhile
}

void PointEntry::Tick() {
    reading_.OnTimer(screen_.show);
    if (reading_.CloseWaits())
        screen_.close();
}

void PointEntry::Act(const Step& record, const Step& showSummary) {
    switch (session_.MainAction()) {
    case CalibrationSession::Action::read:
        Read();
        break;
    case CalibrationSession::Action::record:
        record();
        break;
    case CalibrationSession::Action::showSummary:
        showSummary();
        break;
    }
}

void PointEntry::Read() {
    const std::size_t point = session_.CurrentPoint();
    if (!screen_.fields.Take(session_, point)) {
        Refuse(point);
        return;
    }
    reading_.Begin();
    screen_.show();
}

void PointEntry::Record(const Step& allRecorded) {
    const auto recorded = session_.Record();
    if (recorded == CalibrationSession::Recorded::nothing)
        return;
    reading_.Stop();
    screen_.show();
    if (recorded == CalibrationSession::Recorded::allPoints)
        allRecorded();
    else
        screen_.fields.Focus(session_.CurrentPoint());
}

bool PointEntry::TakeAll() {
    const auto refused = screen_.fields.TakeAll(session_);
    if (refused)
        Refuse(*refused);
    return !refused;
}

void PointEntry::Refuse(std::size_t point) {
    const auto held = reading_.HoldForBox();
    Mcommon::Warn(screen_.refusal);
    screen_.fields.Focus(point);
}
