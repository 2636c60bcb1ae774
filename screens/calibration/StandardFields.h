#pragma once

#include "chem/CalibrationSession.h"
#include "screens/calibration/StandardBox.h"

#include <QObject>

#include <array>
#include <optional>
#include <string>

class CalibrationChoices;

/// The entry fields of the standards of a calibration, one for each point, named `name_0` to
/// `name_5`. Takes what is typed into the session and brings it into another unit.
class StandardFields : public QObject {
    Q_OBJECT

public:
    StandardFields(QWidget& page, const QString& name, int minimumWidth_px);

    StandardBox& operator()(std::size_t point) const { return *boxes_.at(point); }

    void Focus(std::size_t point);

    /// Takes the standard of a point from its field; false where it is no number.
    bool Take(CalibrationSession& session, std::size_t point) const;

    /// Takes the standards of all points; gives the first that is no number.
    std::optional<std::size_t> TakeAll(CalibrationSession& session) const;

    /// Shows the session's standards, and nothing where it has none.
    void ShowStandards(const CalibrationSession& session);

    /// Every field without a standard asks for one in the unit in force.
    void ShowPrompts(const CalibrationSession& session);

    /// Which fields are there, and which can be typed in while a point is read.
    void ShowState(const CalibrationSession& session);

    /// Brings the typed standards into the unit chosen in the list, all of them or none; where that
    /// is impossible, says why and puts the list back. Throws RunTimeError for a standard that is
    /// too large in the other unit.
    void ChangeUnit(CalibrationSession& session, CalibrationChoices& choices,
                    const std::string& electrode, float molarMass_g_per_mol);

Q_SIGNALS:
    /// The cursor has come into the field of a point.
    void Entered(std::size_t point);

    /// The cursor has left a field.
    void Left();

    /// The text of a field has been changed: typed, pasted or set by an assistive tool.
    void Changed(std::size_t point);

private:
    bool CanConvert(float molarMass_g_per_mol) const;

    std::array<StandardBox*, CalibrationSession::maxPoints> boxes_{};
};
