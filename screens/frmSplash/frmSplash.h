#pragma once

#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QDialog>
#include <QLabel>

#include <memory>

namespace Ui {
class frmSplash;
}

/// Shown while the program starts, until its button is pressed; also the about box.
class frmSplash : public QDialog {
    Q_OBJECT

public:
    /// `versionText` is shown as it is.
    explicit frmSplash(const std::string& versionText, QWidget* parent = nullptr);
    ~frmSplash() override;

    /// Escape and the window's own close button leave the splash of the start-up where it is, since
    /// it would leave the program without a window.
    void reject() override;

    /// Whether its button can be pressed; not while the program still starts.
    void SetReady(bool ready);

    /// It has been painted, so that it is seen.
    bool IsPainted() const { return painted_; }

Q_SIGNALS:
    /// The button was pressed.
    void Continued();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Form_Load(const std::string& versionText);
    void cmdCommand1_Click();

    std::unique_ptr<Ui::frmSplash> ui_;
    ControlArray<QLabel> lblLabel;
    bool painted_ = false;
    EventGuard guard_{"Unexpected Error - "};
};
