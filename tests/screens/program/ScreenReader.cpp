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

namespace {

const QString accessible = "org.a11y.atspi.Accessible";
const AccessibleRef desktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
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

bool IsShown(const QVariantList& state) {
    constexpr unsigned showing = 25; // the state's number
    QList<uint> words;
    if (!state.isEmpty())
        state[0].value<QDBusArgument>() >> words;
    return !words.isEmpty() && ((words[0] >> showing) & 1U) != 0;
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
    : connectionName_("screen reader " + sessionBus),
      bus_(QDBusConnection::connectToBus(AccessibilityBus(sessionBus), connectionName_)) {
    EXPECT_TRUE(bus_.isConnected()) << "no accessibility bus";
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

/// Empty where the control has gone meanwhile.
QVariantList ScreenReader::Call(const AccessibleRef& at, const QString& interface,
                                const QString& method, const QVariantList& arguments) const {
    auto request = QDBusMessage::createMethodCall(at.service, at.path, interface, method);
    request.setArguments(arguments);
    const QDBusMessage reply = bus_.call(request, QDBus::Block, patience_ms);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
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

SpokenControl ScreenReader::Read(const AccessibleRef& at) const {
    SpokenControl control;
    control.at = at;
    control.role = Call(at, accessible, "GetRoleName").value(0).toString();
    control.name = Property(at, accessible, "Name").toString();
    control.shown = IsShown(Call(at, accessible, "GetState"));
    if (control.role == "text" || control.role == "spin box")
        control.text = Call(at, "org.a11y.atspi.Text", "GetText", {0, -1}).value(0).toString();
    if (control.role == "combo box")
        control.labels = LabelsOf(at);
    return control;
}

void ScreenReader::Walk(const AccessibleRef& at, const QString& window,
                        std::vector<SpokenControl>& controls) const {
    for (const AccessibleRef& child : ChildrenOf(at)) {
        SpokenControl control = Read(child);
        control.window = window.isNull() ? control.name + "" : window;
        const bool inMenu = control.role == "menu item" || control.role.contains("menu");
        if (!control.shown && !inMenu)
            continue;
        controls.push_back(control);
        if (!hidesItsEntries.contains(control.role))
            Walk(child, control.window, controls);
    }
}

std::vector<SpokenControl> ScreenReader::Controls() const {
    std::vector<SpokenControl> controls;
    for (const AccessibleRef& program : ChildrenOf(desktop))
        Walk(program, {}, controls);
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
    const AccessibleRef keyboard{"org.a11y.atspi.Registry",
                                 "/org/a11y/atspi/registry/deviceeventcontroller"};
    Call(keyboard, "org.a11y.atspi.DeviceEventController", "GenerateKeyboardEvent",
         {keysym, QString(), bySymbol});
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
    const QString editable = "org.a11y.atspi.EditableText";
    EXPECT_TRUE(Call(box.at, editable, "SetTextContents", {text}).value(0).toBool())
        << name.toStdString();
}
