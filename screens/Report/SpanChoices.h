#pragma once

#include "base/Quantity.h"
#include "report/RunCurve.h"
#include "screens/controls/EventGuard.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class SpanChoices;
}

/// What the viewer draws of a span and how: the quantity, and choices that outlive the program.
class SpanChoices : public QWidget {
    Q_OBJECT

public:
    enum AxisEntry { axisRecord, axisTime }; ///< of cboAxis

    explicit SpanChoices(QWidget* parent = nullptr);
    ~SpanChoices() override;

    /// Takes the choices as they were made last.
    void Recall();

    /// Offers these quantities and shows which one is in force; none without a file.
    void ShowQuantities(const std::vector<Quantity>& offered, Quantity inForce);

    Mreport::RunAxis Axis() const;
    bool Log() const; ///< false where the quantity is none for logarithms
    bool OwnScales() const;
    bool Statistics() const;

    /// True where the span is to be drawn otherwise than above record numbers on one linear scale.
    bool WantsOtherDrawing() const;

Q_SIGNALS:
    void QuantityChosen(Quantity quantity);
    void Changed();

private:
    void ConnectControls();
    void Remember();
    void cboQuantity_Click(int Index);
    void AnyChoice_Click();

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::SpanChoices> ui_;
};
