#pragma once

#include "platform/qt/QtPlaces.h"

#include <QTemporaryDir>

#include <filesystem>

/// The user's folders, but for the temporary one: unfinished recordings of others are not this
/// run's.
class TourPlaces : public platform::QtPlaces {
public:
    std::filesystem::path TemporaryFolder() const override {
        return std::filesystem::path(folder_.path().toStdString());
    }

private:
    QTemporaryDir folder_;
};
