#include "screens/program/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

#include <array>

namespace {

const QString accessible = "org.a11y.atspi.Accessible";
const AccessibleRef desktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
const AccessibleRef inputDevices{"org.a11y.atspi.Registry",
                                 "/org/a11y/atspi/registry/deviceeventcontroller"};
const QString inputController = "org.a11y.atspi.DeviceEventController";
constexpr int patience_ms = 20000;

/// What is in these is many, and on the screen in part.
const QStringList hidesItsEntries = {"combo box", "tree", "list", "table"};

/// The address of the accessibility bus, which the desktop starts when it is asked for.
QString AccessibilityBus(const QString& sessionBus) {
    const QString name = "screen reader's session";
    auto session = QDBusConnection::connectToBus(sessionBus, name);
    const auto call = [&session](const QString& interface, const QString& method,
                                 const QVariantList& arguments) {
        auto request =
            QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", interface, method);
        request.setArguments(arguments);
        const QDBusMessage reply = session.call(request, QDBus::Block, patience_ms);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply.arguments();
    };
    const QVariantList address = call("org.a11y.Bus", "GetAddress", {});
    call("org.freedesktop.DBus.Properties", "Set",
         {"org.a11y.Status", "IsEnabled", QVariant::fromValue(QDBusVariant(true))});
    QDBusConnection::disconnectFromBus(name);
    return address.value(0).toString();
}

std::vector<AccessibleRef> References(const QDBusArgument& list) {
    std::vector<AccessibleRef> references;
    list.beginArray();
    while (!list.atEnd()) {
        AccessibleRef each;
        QDBusObjectPath path;
        list.beginStructure();
        list >> each.service >> path;
        list.endStructure();
        each.path = path.path();
        references.push_back(each);
    }
    list.endArray();
    return references;
}

/// The states from 0 to 31, a bit each.
quint32 StatesIn(const QVariantList& reply) {
    QList<uint> words;
    if (!reply.isEmpty())
        reply[0].value<QDBusArgument>() >> words;
    return words.isEmpty() ? 0 : words[0];
}

std::string Listing(const std::vector<SpokenControl>& controls) {
    std::string text;
    for (const SpokenControl& each : controls)
        if (each.shown && !each.name.isEmpty())
            text += "\n  " + (each.role + " \"" + each.name + "\" " + each.text).toStdString();
    return text;
}

} // namespace

ScreenReader::ScreenReader(const QString& sessionBus)
    : address_(AccessibilityBus(sessionBus)), connectionName_("screen reader " + sessionBus),
      bus_(QDBusConnection::connectToBus(address_, connectionName_)) {
    EXPECT_TRUE(bus_.isConnected()) << "no accessibility bus";
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

QDBusPendingCall ScreenReader::Ask(const AccessibleRef& at, const QString& interface,
                                   const QString& method, const QVariantList& arguments) const {
    auto request = QDBusMessage::createMethodCall(at.service, at.path, interface, method);
    request.setArguments(arguments);
    return bus_.asyncCall(request, patience_ms);
}

/// Empty where the control has gone meanwhile.
QVariantList ScreenReader::Answer(QDBusPendingCall& call) {
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QVariantList ScreenReader::Call(const AccessibleRef& at, const QString& interface,
                                const QString& method, const QVariantList& arguments) const {
    auto call = Ask(at, interface, method, arguments);
    return Answer(call);
}

QVariant ScreenReader::Property(const AccessibleRef& at, const QString& interface,
                                const QString& property) const {
    const QVariantList reply =
        Call(at, "org.freedesktop.DBus.Properties", "Get", {interface, property});
    return reply.isEmpty() ? QVariant() : reply[0].value<QDBusVariant>().variant();
}

std::vector<AccessibleRef> ScreenReader::ChildrenOf(const AccessibleRef& at) const {
    const QVariantList reply = Call(at, accessible, "GetChildren");
    return reply.isEmpty() ? std::vector<AccessibleRef>()
                           : References(reply[0].value<QDBusArgument>());
}

QString ScreenReader::LabelsOf(const AccessibleRef& at) const {
    constexpr uint labelledBy = 2; // the relation's number
    QStringList labels;
    const QVariantList reply = Call(at, accessible, "GetRelationSet");
    if (reply.isEmpty())
        return {};
    const auto relations = reply[0].value<QDBusArgument>();
    relations.beginArray();
    while (!relations.atEnd()) {
        uint kind = 0;
        relations.beginStructure();
        relations >> kind;
        const auto targets = References(relations);
        relations.endStructure();
        for (const AccessibleRef& target : targets)
            if (kind == labelledBy)
                labels << Property(target, accessible, "Name").toString();
    }
    relations.endArray();
    return labels.join(", ");
}

/// The questions are all out before the first answer is awaited.
std::vector<SpokenControl> ScreenReader::Read(const std::vector<AccessibleRef>& all) const {
    std::vector<std::array<QDBusPendingCall, 3>> answers;
    for (const AccessibleRef& at : all)
        answers.push_back({Ask(at, accessible, "GetRoleName"),
                           Ask(at, "org.freedesktop.DBus.Properties", "Get", {accessible, "Name"}),
                           Ask(at, accessible, "GetState")});
    std::vector<SpokenControl> controls;
    for (std::size_t i = 0; i < all.size(); ++i) {
        SpokenControl control;
        control.at = all[i];
        control.role = Answer(answers[i][0]).value(0).toString();
        control.name = Answer(answers[i][1]).value(0).value<QDBusVariant>().variant().toString();
        control.states = StatesIn(Answer(answers[i][2]));
        control.shown = control.Is(SpokenState::showing);
        controls.push_back(control);
    }
    return controls;
}

void ScreenReader::ReadContents(SpokenControl& control) const {
    if (control.role == "text" || control.role == "spin box")
        control.text =
            Call(control.at, "org.a11y.atspi.Text", "GetText", {0, -1}).value(0).toString();
    if (control.role == "combo box")
        control.labels = LabelsOf(control.at);
}

/// Without a window, the children are windows.
void ScreenReader::Walk(const AccessibleRef& at, const SpokenControl* window,
                        std::vector<SpokenControl>& controls) const {
    for (SpokenControl& control : Read(ChildrenOf(at))) {
        ReadContents(control);
        control.window = window != nullptr ? window->window : control.name;
        control.windowAt = window != nullptr ? window->windowAt : control.at;
        const bool inMenu = control.role == "menu item" || control.role.contains("menu");
        if (!control.shown && !inMenu)
            continue;
        controls.push_back(control);
        if (!hidesItsEntries.contains(control.role))
            Walk(control.at, &control, controls);
    }
}

std::vector<SpokenControl> ScreenReader::Controls() const {
    std::vector<SpokenControl> controls;
    for (const AccessibleRef& program : Programs())
        Walk(program, nullptr, controls);
    return controls;
}

SpokenControl ScreenReader::Await(const QString& what,
                                  const std::function<bool(const SpokenControl&)>& fits) const {
    QElapsedTimer waiting;
    waiting.start();
    std::vector<SpokenControl> controls;
    do {
        controls = Controls();
        for (const SpokenControl& each : controls)
            if (fits(each))
                return each;
        QTest::qWait(50);
    } while (waiting.elapsed() < patience_ms);
    ADD_FAILURE() << "not spoken: " << what.toStdString() << "; instead" << Listing(controls);
    return {};
}

SpokenControl ScreenReader::AwaitName(const QString& role, const QString& pattern) const {
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    return Await(role + " " + pattern, [&](const SpokenControl& control) {
        return control.role == role && whole.match(control.name).hasMatch();
    });
}

void ScreenReader::Press(const QString& role, const QString& name, const QString& window) const {
    Press(Await(role + " " + name + " in " + window, [&](const SpokenControl& each) {
        return each.role == role && each.name == name && each.window.startsWith(window);
    }));
}

void ScreenReader::Press(const SpokenControl& control) const {
    auto request = QDBusMessage::createMethodCall(control.at.service, control.at.path,
                                                  "org.a11y.atspi.Action", "DoAction");
    request << 0;
    bus_.asyncCall(request); // the answer waits for the dialog that a press may open
}

void ScreenReader::PressKey(int keysym) const {
    constexpr uint bySymbol = 3; // the kind of event: pressed and released
    Call(inputDevices, inputController, "GenerateKeyboardEvent", {keysym, QString(), bySymbol});
}

void ScreenReader::HoldKey(int keycode, bool down) const {
    const uint kind = down ? 0 : 1;
    Call(inputDevices, inputController, "GenerateKeyboardEvent", {keycode, QString(), kind});
}

void ScreenReader::Mouse(QPoint place, const QString& button) const {
    for (const QString& event : {QString("abs"), button})
        Call(inputDevices, inputController, "GenerateMouseEvent", {place.x(), place.y(), event});
}

bool ScreenReader::Focus(const SpokenControl& control) const {
    return Call(control.at, "org.a11y.atspi.Component", "GrabFocus").value(0).toBool();
}

std::vector<AccessibleRef> ScreenReader::Programs() const {
    return ChildrenOf(desktop);
}

QRect ScreenReader::PlaceOf(const SpokenControl& control) const {
    constexpr uint onScreen = 0;
    const QVariantList reply =
        Call(control.at, "org.a11y.atspi.Component", "GetExtents", {onScreen});
    int x = 0, y = 0, width = 0, height = 0;
    if (!reply.isEmpty()) {
        const auto place = reply[0].value<QDBusArgument>();
        place.beginStructure();
        place >> x >> y >> width >> height;
        place.endStructure();
    }
    return {x, y, width, height};
}

void ScreenReader::Write(const QString& name, const QString& text) const {
    const SpokenControl box = AwaitName("text", QRegularExpression::escape(name));
    EXPECT_TRUE(WriteInto(box, text)) << name.toStdString();
}

bool ScreenReader::WriteInto(const SpokenControl& control, const QString& text) const {
    return Call(control.at, "org.a11y.atspi.EditableText", "SetTextContents", {text})
        .value(0)
        .toBool();
}
