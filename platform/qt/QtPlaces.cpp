#include "platform/qt/QtPlaces.h"

#include "platform/System.h"
#include "platform/qt/SystemHabits.h"
#include "platform/qt/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace platform {

namespace {

constexpr const char* folderName = "Vantrel";

QString UserFolder(QStandardPaths::StandardLocation location) {
    const QDir folder(QStandardPaths::writableLocation(location) + "/" + folderName);
    folder.mkpath(".");
    return folder.path();
}

} // namespace

std::filesystem::path QtPlaces::ProgramFolder() const {
    const QString beside = QCoreApplication::applicationDirPath();
    const QString shared = QDir::cleanPath(beside + "/../share/vantrel");
    return Text::ToPath(QFileInfo::exists(shared + "/SetupHlp.txt") ? shared : beside);
}

std::filesystem::path QtPlaces::DataParentFolder() const {
    const QString beside = QCoreApplication::applicationDirPath();
    if (QFileInfo(beside + "/Data").isWritable())
        return Text::ToPath(beside);
    return Text::ToPath(UserFolder(RecordingsLocation()));
}

std::filesystem::path QtPlaces::ConfigurationFolder() const {
    return Text::ToPath(UserFolder(QStandardPaths::GenericConfigLocation));
}

std::filesystem::path QtPlaces::TemporaryFolder() const {
    return SystemTemporaryFolder();
}

} // namespace platform
