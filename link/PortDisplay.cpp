#include "link/PortDisplay.h"

#include "base/NumberText.h"

#include <algorithm>

void PortDisplay::ShowPorts(const std::vector<std::string>& names) const {
    if (controls_.SetPortList)
        controls_.SetPortList(names);
}

void PortDisplay::Select(const PortChoice& choice, const std::vector<std::string>& names) const {
    SelectBitRate(choice);
    SelectPort(choice, names);
}

void PortDisplay::SelectBitRate(const PortChoice& choice) const {
    const auto* const entry = std::find(offeredBitRates.begin(), offeredBitRates.end(),
                                        NumberText::Plain(choice.BitRate));
    if (entry != offeredBitRates.end() && controls_.SelectBitRate)
        controls_.SelectBitRate(static_cast<int>(entry - offeredBitRates.begin()));
}

void PortDisplay::SelectPort(const PortChoice& choice,
                             const std::vector<std::string>& names) const {
    const auto entry = std::find_if(names.begin(), names.end(), [&choice](const std::string& name) {
        return PortName::NumberOf(name) == choice.PortNumber;
    });
    if (entry != names.end() && controls_.SelectPort)
        controls_.SelectPort(static_cast<int>(entry - names.begin()));
}

void PortDisplay::ShowSearching(bool searching) const {
    if (controls_.SetSearching)
        controls_.SetSearching(searching);
}

void PortDisplay::ShowAnswer(const std::string& text) const {
    if (controls_.SetAnswerText)
        controls_.SetAnswerText(text);
}
