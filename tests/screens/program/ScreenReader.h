#pragma once

#include <QDBusConnection>
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
};

/// What a screen reader learns of a control.
struct SpokenControl {
    AccessibleRef at;
    QString window;     ///< the name of the window that it is in
    QString role;       ///< "push button"
    QString name;       ///< a list's name is its chosen entry
    QString text;       ///< of what is written into
    QString labels;     ///< the labels that tell what it is for, joined by ", "
    bool shown = false; ///< it is on the screen
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

    /// Where the control is on the screen, in pixels.
    QRect PlaceOf(const SpokenControl& control) const;

    /// Replaces the text of the box of this name.
    void Write(const QString& name, const QString& text) const;

private:
    QVariantList Call(const AccessibleRef& at, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const;
    QVariant Property(const AccessibleRef& at, const QString& interface,
                      const QString& property) const;
    std::vector<AccessibleRef> ChildrenOf(const AccessibleRef& at) const;
    QString LabelsOf(const AccessibleRef& at) const;
    SpokenControl Read(const AccessibleRef& at) const;
    void Walk(const AccessibleRef& at, const QString& window,
              std::vector<SpokenControl>& controls) const;

    QString connectionName_;
    QDBusConnection bus_;
};
