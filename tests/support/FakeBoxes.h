#pragma once

#include "support/FakePlatform.h"

#include <functional>

namespace fake {

/// Message boxes that come as they may: each runs the test's steps while it is open. For tests that
/// cannot know beforehand which boxes come; they are installed by Install below.
class Boxes : public platform::Dialogs {
public:
    std::function<void()> whileOpen;

    void Beep() override {}
    int ShowMessage(const std::string& /*prompt*/, int /*style*/,
                    const std::string& /*caption*/) override {
        whileOpen();
        return platform::button::ok;
    }
    std::string AskText(const std::string& /*prompt*/, const std::string& /*title*/,
                        const std::string& /*proposal*/) override {
        return {};
    }
    std::optional<std::filesystem::path>
    ChooseFile(const platform::FileDialogRequest& /*request*/) override {
        return std::nullopt;
    }
};

/// A fake platform's services with these boxes in place of its scripted ones, as long as it lives.
class ServicesWithBoxes {
public:
    ServicesWithBoxes(Platform& platform, Boxes& boxes)
        : services_{boxes,
                    platform.desktop,
                    platform.clock,
                    *platform.profile,
                    platform.userStore,
                    platform.places,
                    *platform.files,
                    platform.printing} {
        platform::Install(&services_);
    }

private:
    platform::Services services_;
};

} // namespace fake
