#pragma once

#include "screens/calibration/PointReading.h"

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

class CalibrationChoices;
class EventGuard;
class StandardFields;

/// Going through the points of a calibration, as both screens do: the cursor chooses the point, its
/// standard is taken, it is read and recorded.
class PointEntry : public QObject {
    Q_OBJECT

public:
    using Step = std::function<void()>;

    /// What the screens differ in. Everything must outlive the entry.
    struct Screen {
        std::string name;       ///< of the form, for the guard
        std::string fieldsName; ///< of the fields, "txtEntry"
        StandardFields& fields;
        CalibrationChoices& choices;
        std::string_view refusal; ///< said for a standard that is no number
        bool prompts;             ///< an empty field asks for its standard
        Step show;                ///< shows the session as it stands
        Step close;               ///< the form was to close while a tick was at work
    };

    PointEntry(CalibrationSession& session, PointReading& reading, Screen screen);
    ~PointEntry() override;

    /// Wires fields, number of points and the reading's timer through the form's guard.
    void Wire(EventGuard& guard);

    /// The main button: reads, or does what the screen does next.
    void Act(const Step& record, const Step& showSummary);

    /// Keeps the readings as the point's and goes on to the next; nothing before a reading has
    /// come.
    void Record(const Step& allRecorded);

    /// Takes the standards of all points; false where one was refused.
    bool TakeAll();

private:
    void Enter(std::size_t point);
    void Leave();
    void Change(std::size_t point);
    void ChoosePointCount();
    void Tick();
    void Read();
    void Refuse(std::size_t point);

    CalibrationSession& session_;
    PointReading& reading_;
    Screen screen_;
};
