#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

/// Where a control is found on the accessibility bus.
struct AccessibleRef {
    QString service;
    QString path;
    bool operator==(const AccessibleRef&) const = default;
};

/// A state of a control or window, by its number on the bus.
enum class SpokenState { active = 1, editable = 7, enabled = 8, showing = 25 };

/// What a screen reader learns of a control.
struct SpokenControl {
    AccessibleRef at;
    AccessibleRef windowAt; ///< of the window that it is in, or is
    QString window;         ///< the name of that window
    QString role;           ///< "push button"
    QString name;           ///< a list's name is its chosen entry
    QString text;           ///< of what is written into
    QString labels;         ///< the labels that tell what it is for, joined by ", "
    bool shown = false;     ///< it is on the screen
    quint32 states = 0;

    bool Is(SpokenState state) const { return ((states >> static_cast<int>(state)) & 1U) != 0; }
    bool IsWindow() const { return at == windowAt; }
};

/// Reads the programs on a desktop's accessibility bus as a screen reader does, by name and value.
class ScreenReader {
public:
    /// Tells the desktop of the session bus that a screen reader is at work: programs that start
    /// from now on speak. Fails the test where the desktop has no accessibility bus.
    explicit ScreenReader(const QString& sessionBus);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// All controls that are on the screen, and the entries of the menus.
    std::vector<SpokenControl> Controls() const;

    /// Waits until a control on the screen satisfies this, and returns it; fails the test after
    /// twenty seconds, saying `what` was awaited and what is there instead.
    SpokenControl Await(const QString& what,
                        const std::function<bool(const SpokenControl&)>& fits) const;

    /// Waits for a control of this role whose name matches the whole regular expression.
    SpokenControl AwaitName(const QString& role, const QString& pattern) const;

    /// Presses the button or menu entry of this name, as an assistive tool does; in the window
    /// whose name begins so.
    void Press(const QString& role, const QString& name, const QString& window = {}) const;

    void Press(const SpokenControl& control) const;

    /// Presses a key of the keyboard, by its X name's number, in the window that has the focus.
    void PressKey(int keysym) const;

    /// Presses a key, or lets go of it, by its number on the keyboard.
    void HoldKey(int keycode, bool down) const;

    /// Moves the pointer there, and then does this with a button of the mouse: "b1c" clicks the
    /// first one, "b3p" presses the third and "b3r" releases it, "b4c" turns the wheel away.
    void Mouse(QPoint place, const QString& button) const;

    /// Whether the control is there and has taken the focus.
    bool Focus(const SpokenControl& control) const;

    /// Replaces the text of this box; false where it takes none.
    bool WriteInto(const SpokenControl& control, const QString& text) const;

    /// The accessibility bus, and the programs that are found on it.
    const QString& BusAddress() const { return address_; }
    std::vector<AccessibleRef> Programs() const;

    /// Where the control is on the screen, in pixels.
    QRect PlaceOf(const SpokenControl& control) const;

    /// Replaces the text of the box of this name.
    void Write(const QString& name, const QString& text) const;

private:
    QDBusPendingCall Ask(const AccessibleRef& at, const QString& interface, const QString& method,
                         const QVariantList& arguments = {}) const;
    static QVariantList Answer(QDBusPendingCall& call);
    QVariantList Call(const AccessibleRef& at, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const;
    QVariant Property(const AccessibleRef& at, const QString& interface,
                      const QString& property) const;
    std::vector<AccessibleRef> ChildrenOf(const AccessibleRef& at) const;
    QString LabelsOf(const AccessibleRef& at) const;
    std::vector<SpokenControl> Read(const std::vector<AccessibleRef>& all) const;
    void ReadContents(SpokenControl& control) const;
    void Walk(const AccessibleRef& at, const SpokenControl* window,
              std::vector<SpokenControl>& controls) const;

    QString address_;
    QString connectionName_;
    QDBusConnection bus_;
};
