#include "walk/built/Scene.h"

#include <algorithm>

namespace {

/// Not to be touched: what would leave the walk's folder or instrument, and the average, without
/// which each value shown is one frame's.
bool IsOutOfBounds(const SpokenControl& control) {
    return control.name.contains("simulated", Qt::CaseInsensitive) ||
           control.name.startsWith("Averaging number");
}

} // namespace

Scene::Scene(std::vector<SpokenControl> controls) : controls_(std::move(controls)) {
    for (const SpokenControl& each : controls_)
        if (each.IsWindow() && each.shown)
            windows_.push_back(each);
    const auto active = std::ranges::find_if(
        windows_, [](const auto& window) { return window.Is(SpokenState::active); });
    const auto box = Box();
    if (box)
        reached_ = *box;
    else if (active != windows_.end())
        reached_ = *active;
    else if (!windows_.empty())
        reached_ = windows_.back();
}

Scene Scene::WithYoungestReached() const {
    Scene scene = *this;
    if (!windows_.empty() && !Box())
        scene.reached_ = windows_.back();
    return scene;
}

std::vector<SpokenControl> Scene::UsableIn(const SpokenControl& window) const {
    std::vector<SpokenControl> usable;
    for (const SpokenControl& each : controls_)
        if (each.windowAt == window.at && each.Is(SpokenState::enabled) && !each.IsWindow() &&
            !NameOf(each).isEmpty() && !IsOutOfBounds(each))
            usable.push_back(each);
    return usable;
}

std::optional<SpokenControl> Scene::Find(const Step& step) const {
    const bool byPointer = step.action == "click" || step.action == "wheel";
    for (const SpokenControl& window : windows_)
        if (window.name == step.window && (byPointer || window.at == reached_.at))
            for (const SpokenControl& each : UsableIn(window))
                if (NameOf(each) == step.control)
                    return each;
    return std::nullopt;
}

std::optional<SpokenControl> Scene::Box() const {
    const auto box = std::find_if(windows_.rbegin(), windows_.rend(), [this](const auto& window) {
        return window.role.startsWith("alert") && !TextOf(window).isEmpty();
    });
    return box == windows_.rend() ? std::nullopt : std::optional(*box);
}

QString Scene::TextOf(const SpokenControl& box) const {
    QStringList texts;
    for (const SpokenControl& each : controls_)
        if (each.windowAt == box.at && each.role == "label" && !each.name.isEmpty())
            texts << each.name;
    return texts.join("; ");
}

std::optional<SpokenControl> Scene::FileNameIn(const SpokenControl& window) const {
    for (const SpokenControl& each : controls_)
        if (each.windowAt == window.at && each.role == "text" &&
            (each.name == "File name:" || each.name == "Directory:"))
            return each;
    return std::nullopt;
}

std::optional<SpokenControl> Scene::ButtonIn(const SpokenControl& window,
                                             const QStringList& names) const {
    for (const QString& name : names)
        for (const SpokenControl& each : controls_)
            if (each.windowAt == window.at && each.role == "push button" && each.name == name &&
                each.Is(SpokenState::enabled))
                return each;
    return std::nullopt;
}

bool Scene::HasLabel(const SpokenControl& window, const QString& beginning) const {
    return std::ranges::any_of(controls_, [&](const SpokenControl& each) {
        return each.windowAt == window.at && each.role == "label" &&
               each.name.startsWith(beginning);
    });
}

bool Scene::HasReading(const SpokenControl& window) const {
    return HasLabel(window, "Channel 1 potential") &&
           !HasLabel(window, "Channel 1 potential in mV: blank");
}

std::string Scene::Told() const {
    std::string text = "on the screen:";
    for (const SpokenControl& each : controls_)
        if (each.shown)
            text += (each.IsWindow() ? "\n " : "\n   ") + each.role.toStdString() + " \"" +
                    each.name.toStdString() + "\" " + std::to_string(each.states);
    return text;
}

QString Scene::NameOf(const SpokenControl& control) {
    const QString& name = control.labels.isEmpty() ? control.name : control.labels;
    return name.isEmpty() ? QString() : control.role + " " + name;
}
