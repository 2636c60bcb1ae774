#include "walk/built/BuiltHand.h"

#include <QTest>

namespace {

constexpr int pressed_ms = 150;        ///< a press over the bus lasts 100 ms
constexpr int altKey = 64, f4Key = 70; ///< their numbers on the keyboard

} // namespace

void BuiltHand::Do(const Step& step, const Scene& scene) const {
    if (step.action == "answer")
        AnswerBox(step, scene);
    else if (step.action == "file")
        AnswerFileDialog(step, scene);
    else if (step.action == "size")
        Resize(step, scene);
    else if (step.action == "key")
        reader_.PressKey(step.argument.toInt());
    else if (step.action == "close") {
        reader_.HoldKey(altKey, true);
        for (const bool down : {true, false})
            reader_.HoldKey(f4Key, down);
        reader_.HoldKey(altKey, false);
    } else if (const auto control = scene.Find(step))
        Touch(step, *control);
}

void BuiltHand::AnswerBox(const Step& step, const Scene& scene) const {
    const auto box = scene.Box();
    if (!box || scene.TextOf(*box) != step.window)
        return;
    for (const SpokenControl& each : scene.UsableIn(*box))
        if (Scene::NameOf(each) == step.control)
            return Press(each);
}

void BuiltHand::AnswerFileDialog(const Step& step, const Scene& scene) const {
    for (const SpokenControl& window : scene.Windows()) {
        const auto name = scene.FileNameIn(window);
        if (!name || window.name != step.window)
            continue;
        const auto taken = scene.ButtonIn(window, {"Save", "Open", "Choose"});
        const auto left = scene.ButtonIn(window, {"Cancel"});
        if (!step.argument.isEmpty() && taken &&
            reader_.WriteInto(*name, files_ + "/" + step.argument))
            Press(*taken);
        else if (left)
            Press(*left);
    }
}

/// By the pointer, so that a box that has opened meanwhile keeps the press from what is behind it.
void BuiltHand::Press(const SpokenControl& control) const {
    const QRect place = reader_.PlaceOf(control);
    if (control.shown && control.role == "push button" && screen_.contains(place))
        return reader_.Mouse(place.center(), "b1c");
    reader_.Press(control);
    QTest::qWait(pressed_ms);
}

void BuiltHand::Touch(const Step& step, const SpokenControl& control) const {
    if (step.action == "press")
        Press(control);
    else if (step.action == "write")
        reader_.WriteInto(control, step.argument);
    else if (step.action == "choose" && reader_.Focus(control))
        reader_.PressKey(step.argument.toInt());
    else if (step.action == "click" || step.action == "wheel")
        PointAt(control, step.argument);
}

void BuiltHand::PointAt(const SpokenControl& control, const QString& button) const {
    const QRect place = reader_.PlaceOf(control);
    if (!place.isEmpty())
        reader_.Mouse(place.center(), button);
}

/// As the window manager takes it: the third button drags a window's nearest corner while Alt is
/// held.
void BuiltHand::Resize(const Step& step, const Scene& scene) const {
    const QStringList by = step.argument.split(' ');
    for (const SpokenControl& window : scene.Windows()) {
        const QPoint corner = reader_.PlaceOf(window).bottomRight() - QPoint(20, 20);
        if (window.name != step.window || corner.x() < 0 || corner.y() < 0)
            continue;
        constexpr QPoint middle(300, 250); // of the sizes that are drawn
        const QPoint to = corner + QPoint(by.value(0).toInt(), by.value(1).toInt()) - middle;
        reader_.HoldKey(altKey, true);
        reader_.Mouse(corner, "b3p");
        reader_.Mouse(QPoint(std::max(to.x(), 0), std::max(to.y(), 0)), "b3r");
        reader_.HoldKey(altKey, false);
        return;
    }
}
