#pragma once

#include "platform/Places.h"

namespace platform {

class QtPlaces : public Places {
public:
    std::filesystem::path ProgramFolder() const override;
    std::filesystem::path DataParentFolder() const override;
    std::filesystem::path ConfigurationFolder() const override;
    std::filesystem::path TemporaryFolder() const override;
};

} // namespace platform
