#pragma once

#include "screens/controls/ControlArray.h"

#include <QCheckBox>
#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class ChannelChoicePage;
}

/// The choice of the channels that are calibrated together, beside the instructions.
class ChannelChoicePage : public QWidget {
    Q_OBJECT

public:
    explicit ChannelChoicePage(QWidget* parent = nullptr);
    ~ChannelChoicePage() override;

    /// Offers the instrument's channels with their electrodes.
    void ShowChannels();

    /// The channels (0-based) that are offered and ticked, in ascending order.
    std::vector<std::size_t> Ticked() const;

    bool IsTicked(std::size_t channel) const { return chkSimult(channel).isChecked(); }

    /// Another ticked channel has an electrode of another type.
    bool DiffersFromOthers(std::size_t channel) const;

    /// Takes a tick back without telling the handler.
    void Untick(std::size_t channel);

Q_SIGNALS:
    /// A box has been ticked or unticked: by mouse, keys or an assistive tool.
    void Toggled(std::size_t channel);

private:
    void ShowInstructions();

    std::unique_ptr<Ui::ChannelChoicePage> ui_;
    ControlArray<QCheckBox> chkSimult;
};
