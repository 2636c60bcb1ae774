#pragma once

#include "screens/program/ScreenReader.h"
#include "walk/Course.h"

#include <QStringList>

#include <optional>
#include <vector>

/// What is on the screen at a moment. A user reaches the window that has the keyboard: a box that
/// waits for an answer, where there is one. What he points at may be in any other, too.
class Scene {
public:
    explicit Scene(std::vector<SpokenControl> controls);

    /// In the order in which they were made.
    const std::vector<SpokenControl>& Windows() const { return windows_; }

    /// The window that has the keyboard; it has no role where there is none.
    const SpokenControl& Reached() const { return reached_; }

    /// The same where the window that was made last is reached, unless a box waits.
    Scene WithYoungestReached() const;

    /// What can be used in a window, and has a name by which it is found again.
    std::vector<SpokenControl> UsableIn(const SpokenControl& window) const;

    /// The control that a step touches, where it is reached, or may be pointed at.
    std::optional<SpokenControl> Find(const Step& step) const;

    /// The message box that waits, and its text.
    std::optional<SpokenControl> Box() const;
    QString TextOf(const SpokenControl& box) const;

    /// A file dialog's box for the name; nothing where the window is none.
    std::optional<SpokenControl> FileNameIn(const SpokenControl& window) const;

    /// Buttons of a window by name, "Yes" or "Record"; the first of these that is there.
    std::optional<SpokenControl> ButtonIn(const SpokenControl& window,
                                          const QStringList& names) const;

    bool HasLabel(const SpokenControl& window, const QString& beginning) const;

    /// The measuring page shows values.
    bool HasReading(const SpokenControl& window) const;

    /// What is there, for people.
    std::string Told() const;

    /// How a step names the control: "push button Record"; a list by what it is for, since its name
    /// is what is chosen.
    static QString NameOf(const SpokenControl& control);

private:
    std::vector<SpokenControl> controls_;
    std::vector<SpokenControl> windows_;
    SpokenControl reached_;
};
