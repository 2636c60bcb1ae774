#include "screens/calibration/StandardFields.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationChoices.h"
#include "screens/calibration/CalibrationTexts.h"

#include <QScopeGuard>

#include <algorithm>
#include <vector>

StandardFields::StandardFields(QWidget& page, const QString& name, int minimumWidth_px)
    : QObject(&page) {
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point) {
        auto* box = new StandardBox(&page);
        box->setObjectName(QString("%1_%2").arg(name).arg(point));
        box->setAccessibleName(QString("Standard of point %1").arg(point + 1));
        box->setMinimumWidth(minimumWidth_px);
        connect(box, &StandardBox::Entered, this, [this, point] { Q_EMIT Entered(point); });
        connect(box, &StandardBox::Left, this, &StandardFields::Left);
        connect(box, &StandardBox::textChanged, this, [this, point] { Q_EMIT Changed(point); });
        boxes_.at(point) = box;
    }
}

void StandardFields::Focus(std::size_t point) {
    (*this)(point).setFocus(Qt::OtherFocusReason);
    (*this)(point).selectAll();
}

bool StandardFields::Take(CalibrationSession& session, std::size_t point) const {
    const auto standard = (*this)(point).Standard();
    if (standard)
        session.SetStandard(point, *standard);
    return standard.has_value();
}

std::optional<std::size_t> StandardFields::TakeAll(CalibrationSession& session) const {
    for (std::size_t point = 0; point < session.PointCount(); ++point)
        if (!Take(session, point))
            return point;
    return std::nullopt;
}

void StandardFields::ShowStandards(const CalibrationSession& session) {
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point) {
        const auto standard = session.Standard(point);
        (*this)(point).ShowText(standard ? Text::ToQt(NumberText::Plain(*standard)) : QString());
    }
}

void StandardFields::ShowPrompts(const CalibrationSession& session) {
    const QString prompt = Text::ToQt(CalibrationTexts::Prompt(session.IsPH(), session.Unit()));
    for (StandardBox* box : boxes_)
        if (box->IsBlank())
            box->ShowText(prompt);
}

void StandardFields::ShowState(const CalibrationSession& session) {
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point) {
        (*this)(point).setVisible(point < session.PointCount());
        (*this)(point).ShowState(session.IsReading(), session.IsBeingRead(point));
    }
}

bool StandardFields::CanConvert(float molarMass_g_per_mol) const {
    const auto isNumber = [](const StandardBox* box) { return box->Standard().has_value(); };
    return molarMass_g_per_mol > 0 || std::ranges::none_of(boxes_, isNumber);
}

void StandardFields::ChangeUnit(CalibrationSession& session, CalibrationChoices& choices,
                                const std::string& electrode, float molarMass_g_per_mol) {
    const StandardUnit unit = choices.Unit();
    if (unit == session.Unit())
        return;
    // All or none: a conversion that fails leaves every field, and the list shows its unit again.
    auto unchanged = qScopeGuard([&] { choices.ShowChoices(session); });
    if (session.IsPH() || session.IsReading())
        return; // the list is hidden or waits; only a tool can have changed it
    if (!CanConvert(molarMass_g_per_mol)) {
        Mcommon::Warn("The molar mass of " + electrode +
                      " is not known, so the standards cannot be converted.\nPlease enter it on "
                      "the setup page first.");
        return;
    }
    std::vector<QString> texts;
    for (const StandardBox* box : boxes_)
        texts.push_back(Text::ToQt(
            StandardEntry::Converted(Text::FromQt(box->text()), unit, molarMass_g_per_mol)));
    unchanged.dismiss();
    session.SetUnit(unit);
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point)
        (*this)(point).ShowText(texts[point]);
}
