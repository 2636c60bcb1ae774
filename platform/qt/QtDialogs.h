#pragma once

#include "platform/Dialogs.h"

namespace platform {

/// Message boxes, input boxes and file dialogs of Qt, each over the active window.
class QtDialogs : public Dialogs {
public:
    void Beep() override;
    int ShowMessage(const std::string& prompt, int style, const std::string& caption) override;
    std::string AskText(const std::string& prompt, const std::string& title,
                        const std::string& proposal) override;
    std::optional<std::filesystem::path> ChooseFile(const FileDialogRequest& request) override;
};

} // namespace platform
