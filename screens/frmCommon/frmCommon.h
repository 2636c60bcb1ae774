#pragma once

#include "report/Selection.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <functional>
#include <memory>

namespace Mreport {
class ReportGraph;
}
namespace Ui {
class frmCommon;
}

/// Choice of the quantity and the channels that the graph shows.
class frmCommon : public QDialog {
    Q_OBJECT

public:
    enum Button { acceptButton, cancelButton }; ///< of cmdBtn

    /// Shows what is selected now and changes it when it is accepted. The graph gives the number of
    /// points and takes the number of sets and the left title.
    frmCommon(const Mreport::ViewedFile& file, Mreport::ShownGraph& shown,
              Mreport::ReportGraph& graph, QWidget* parent = nullptr);
    ~frmCommon() override;

    /// Draws the graph with the accepted selection.
    std::function<void()> Redraw = [] {};

private:
    void optData_Click(std::size_t Index);
    void chkChan_Click(std::size_t Index);
    void cmdBtn_Click(std::size_t Index);
    void Timer1_Timer();
    void ShowBoxes();
    void AcceptSelection();
    void ShowBusy(bool busy);

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::frmCommon> ui_;
    Mreport::ShownGraph& shown_;
    Mreport::ReportGraph& graph_;
    Mreport::Selection selection_;
    ControlArray<QRadioButton> optData;
    ControlArray<QCheckBox> chkChan;
    ControlArray<QLabel> lblChan;
    ControlArray<QPushButton> cmdBtn;
    QTimer Timer1;
};
