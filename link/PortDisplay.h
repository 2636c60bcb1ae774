#pragma once

#include "link/Controls.h"
#include "link/PortChoice.h"

#include <string>
#include <vector>

/// What the link shows on the port screen, as far as there is one and it has the control for it.
class PortDisplay {
public:
    /// The controls must outlive the display.
    explicit PortDisplay(const CommPort::Controls& controls) : controls_(controls) {}

    /// The names of the ports that can be opened, as entries of the list.
    void ShowPorts(const std::vector<std::string>& names) const;

    /// Selects the choice in both lists, the one of the ports holding `names`; a value without an
    /// entry leaves the selection.
    void Select(const PortChoice& choice, const std::vector<std::string>& names) const;
    void SelectBitRate(const PortChoice& choice) const;
    void SelectPort(const PortChoice& choice, const std::vector<std::string>& names) const;

    void ShowSearching(bool searching) const;
    void ShowAnswer(const std::string& text) const;

private:
    const CommPort::Controls& controls_;
};
