#include "walk/built/BuiltAnalyst.h"

#include <array>

namespace {

constexpr int leftKey = 0xff51, upKey = 0xff52, rightKey = 0xff53, downKey = 0xff54;
constexpr int tabKey = 0xff09, returnKey = 0xff0d, escapeKey = 0xff1b, deleteKey = 0xffff;

const QStringList pressable = {"push button", "check box", "radio button", "toggle button"};
const QString leaveQuestion = "Are you sure you want to exit?";
const QString recoveryQuestion = "A recording was interrupted";

QString Number(std::size_t number) {
    return QString::number(number);
}

} // namespace

BuiltAnalyst::BuiltAnalyst(std::uint64_t seed, QString files, Troubles troubles)
    : random_(seed), files_(std::move(files)), troubles_(troubles) {}

std::optional<Step> BuiltAnalyst::Answer(const Scene& scene, bool leaving) {
    if (const auto box = scene.Box())
        return AnswerBox(scene, *box, leaving);
    const SpokenControl& window = scene.Reached();
    if (scene.FileNameIn(window))
        return AnswerFileDialog(*scene.FileNameIn(window), leaving);
    if (scene.HasLabel(window, "Input new averaging number")) // the average stays as it is
        return Step{"press", window.name, "push button Cancel"};
    return std::nullopt;
}

/// He leaves the program when it is time for it, not before, and a recording of his own is brought
/// into its file.
Step BuiltAnalyst::AnswerBox(const Scene& scene, const SpokenControl& box, bool leaving) {
    const QString text = scene.TextOf(box);
    QStringList names;
    for (const SpokenControl& each : scene.UsableIn(box))
        if (each.role == "push button")
            names << each.name;
    QString name = names.isEmpty() ? QString() : AnyOf(names);
    if (text.contains(recoveryQuestion))
        name = text.contains(files_) ? "Yes" : "No";
    else if (text.contains(leaveQuestion) || leaving)
        name = leaving ? "Yes" : "No";
    if (!names.contains(name))
        name = names.value(0);
    return {"answer", text, "push button " + name};
}

/// By a name of his folder, or by leaving the dialog.
Step BuiltAnalyst::AnswerFileDialog(const SpokenControl& name, bool leaving) {
    const bool cancels = leaving || Below(4) == 0 || name.name == "Directory:";
    return {"file", name.window, {}, cancels ? "" : "walk" + Number(Below(3))};
}

std::optional<Step> BuiltAnalyst::TowardsRecord(const Scene& scene) const {
    const SpokenControl& window = scene.Reached();
    if (scene.ButtonIn(window, {"Record"}) && !scene.HasReading(window))
        return std::nullopt;
    const auto next = scene.ButtonIn(window, {"Measure >", "Record", "Start"});
    return next ? std::optional<Step>({"press", window.name, Scene::NameOf(*next)}) : std::nullopt;
}

Step BuiltAnalyst::TowardsEnd(const Scene& scene) {
    const SpokenControl& window = scene.Reached();
    const auto button =
        scene.ButtonIn(window, {"Exit", "Close this window and go on", "Cancel", "Close"});
    if (button)
        return {"press", window.name, Scene::NameOf(*button)};
    return {"close", window.name};
}

std::optional<Step> BuiltAnalyst::Act(const Scene& scene) {
    // What an analyst does often stands more than once.
    static constexpr std::array<Decide, 20> decisions = {
        &BuiltAnalyst::PressButton, &BuiltAnalyst::PressButton,    &BuiltAnalyst::PressButton,
        &BuiltAnalyst::PressButton, &BuiltAnalyst::PressButton,    &BuiltAnalyst::PressButton,
        &BuiltAnalyst::ChooseEntry, &BuiltAnalyst::ChooseEntry,    &BuiltAnalyst::ChooseEntry,
        &BuiltAnalyst::WriteText,   &BuiltAnalyst::WriteText,      &BuiltAnalyst::ChooseFromMenu,
        &BuiltAnalyst::Click,       &BuiltAnalyst::ChooseFromMenu, &BuiltAnalyst::Click,
        &BuiltAnalyst::PressKey,    &BuiltAnalyst::PressKey,       &BuiltAnalyst::TurnWheel,
        &BuiltAnalyst::Resize,      &BuiltAnalyst::Close};
    if (Below(6) == 0)
        return Disturb();
    if (scene.Windows().empty())
        return std::nullopt;
    if (Below(8) == 0) // he turns to another window
        return Click(scene, scene.Windows()[Below(scene.Windows().size())]);
    return (this->*decisions[Below(decisions.size())])(scene, scene.Reached());
}

/// What happens to his line, clock or disk; each trouble passes.
Step BuiltAnalyst::Disturb() {
    static const QStringList line = {"unplug 0.5",
                                     "replug",
                                     "fault silence times 1",
                                     "fault half times 1",
                                     "fault badEnd times 1",
                                     "fault garbage times 1",
                                     "fault noise times 2",
                                     "fault extra times 1",
                                     "fault pieces 0.1 times 2",
                                     "auto 0.3",
                                     "auto off",
                                     "electrode 1 Ca",
                                     "electrode 2 pH offset 20",
                                     "solution 1 water",
                                     "solution all pH 7",
                                     "temperature all 20",
                                     "replug",
                                     "replug"};
    static const QStringList clock = {"0",      "7",     "-7",     "3600",  "-3600",
                                      "-86400", "86400", "summer", "winter"};
    static const QStringList disk = {"0", "600", "5000", "well", "well", "well"};
    constexpr std::size_t ofLineAlone = 5;
    switch (troubles_ == Troubles::ofLine ? ofLineAlone : Below(6)) {
    case 0:
        return {"clock", {}, {}, AnyOf(clock)};
    case 1:
        return {"disk", {}, {}, AnyOf(disk)};
    default:
        return {"instrument", {}, {}, AnyOf(line)};
    }
}

QString BuiltAnalyst::AnyOf(const QStringList& texts) {
    return texts.at(static_cast<int>(Below(static_cast<std::size_t>(texts.size()))));
}

std::optional<SpokenControl> BuiltAnalyst::Any(const Scene& scene, const SpokenControl& window,
                                               const QStringList& roles) {
    std::vector<SpokenControl> found;
    for (const SpokenControl& each : scene.UsableIn(window))
        if (roles.isEmpty() ? each.shown : roles.contains(each.role))
            found.push_back(each);
    return found.empty() ? std::nullopt : std::optional(found[Below(found.size())]);
}

std::optional<Step> BuiltAnalyst::PressButton(const Scene& scene, const SpokenControl& window) {
    const auto button = Any(scene, window, pressable);
    return button ? std::optional<Step>({"press", window.name, Scene::NameOf(*button)})
                  : std::nullopt;
}

std::optional<Step> BuiltAnalyst::ChooseFromMenu(const Scene& scene, const SpokenControl& window) {
    const auto entry = Any(scene, window, {"menu item", "check menu item", "radio menu item"});
    return entry ? std::optional<Step>({"press", window.name, Scene::NameOf(*entry)})
                 : std::nullopt;
}

std::optional<Step> BuiltAnalyst::ChooseEntry(const Scene& scene, const SpokenControl& window) {
    const auto list = Any(scene, window, {"combo box"});
    const int key = Below(2) == 0 ? upKey : downKey;
    return list ? std::optional<Step>(
                      {"choose", window.name, Scene::NameOf(*list), QString::number(key)})
                : std::nullopt;
}

std::optional<Step> BuiltAnalyst::WriteText(const Scene& scene, const SpokenControl& window) {
    static const QStringList texts = {"",    "1",  "10", "100",  "4.01",  "7.00",   "0,5",     "-3",
                                      "1e9", "ab", "2",  "9999", "0.001", "sample", "\xC3\xA4"};
    const auto box = Any(scene, window, {"text", "spin box"});
    const QString text = AnyOf(texts);
    return box && box->Is(SpokenState::editable)
               ? std::optional<Step>({"write", window.name, Scene::NameOf(*box), text})
               : std::nullopt;
}

std::optional<Step> BuiltAnalyst::PressKey(const Scene& /*scene*/, const SpokenControl& window) {
    static constexpr std::array<int, 9> keys = {tabKey,  returnKey, escapeKey, ' ',      upKey,
                                                downKey, leftKey,   rightKey,  deleteKey};
    return Step{"key", window.name, {}, QString::number(keys[Below(keys.size())])};
}

std::optional<Step> BuiltAnalyst::TurnWheel(const Scene& scene, const SpokenControl& window) {
    const auto under = Any(scene, window, {});
    return under ? std::optional<Step>(
                       {"wheel", window.name, Scene::NameOf(*under), Below(2) == 0 ? "b4c" : "b5c"})
                 : std::nullopt;
}

std::optional<Step> BuiltAnalyst::Click(const Scene& scene, const SpokenControl& window) {
    const auto under = Any(scene, window, {});
    return under ? std::optional<Step>({"click", window.name, Scene::NameOf(*under), "b1c"})
                 : std::nullopt;
}

std::optional<Step> BuiltAnalyst::Resize(const Scene& /*scene*/, const SpokenControl& window) {
    return Step{"size", window.name, {}, Number(Below(600)) + " " + Number(Below(500))};
}

std::optional<Step> BuiltAnalyst::Close(const Scene& /*scene*/, const SpokenControl& window) {
    return Below(3) == 0 ? std::optional<Step>({"close", window.name}) : std::nullopt;
}
