#pragma once

#include "platform/qt/QtPlaces.h"

#include <QTemporaryDir>

#include <filesystem>

/// The user's folders, but for the temporary one: unfinished recordings of others are not this
/// run's.
class TourPlaces : public platform::QtPlaces {
public:
#ifdef _WIN32 // elsewhere TourMain tells the desktop's folders by variables
    std::filesystem::path DataParentFolder() const override {
        return Folder("data");
    }
    std::filesystem::path ConfigurationFolder() const override {
        return Folder("config");
    }
#endif
    std::filesystem::path TemporaryFolder() const override {
        return Folder("temporary");
    }

private:
    std::filesystem::path Folder(const char* name) const {
        const auto folder = std::filesystem::path(folder_.path().toStdString()) / name;
        std::filesystem::create_directories(folder);
        return folder;
    }

    QTemporaryDir folder_;
};
