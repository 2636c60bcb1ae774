// What the package tells the desktop of measurement files, asked the way that a file manager asks.

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString packaging = VANTREL_PACKAGING;
const QString measurementType = "application/x-vantrel-measurement";

/// A user's data folder that holds the package's description of the file type.
class MimeType : public testing::Test {
protected:
    MimeType() {
        const QString packages = data.filePath("mime/packages");
        QDir().mkpath(packages);
        EXPECT_TRUE(QFile::copy(packaging + "/vantrel.xml", packages + "/vantrel.xml"));
        qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    }

    QString TypeOf(const QString& name, const QByteArray& content) const {
        QFile file(data.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        return QMimeDatabase().mimeTypeForFile(file.fileName()).name();
    }

    QTemporaryDir data;
};

TEST_F(MimeType, Files_of_four_and_of_eight_channels_are_measurements) {
    const QByteArray head = QByteArray(150, '-') + "\r\nProject Name: Well 7\tAnalyst: ";
    EXPECT_EQ(TypeOf("spring-1.4ch", head), measurementType);
    EXPECT_EQ(TypeOf("spring-1.8ch", head), measurementType);
    EXPECT_EQ(TypeOf("SPRING-1.4CH", head), measurementType);
    EXPECT_EQ(TypeOf("empty.4ch", ""), measurementType);
    EXPECT_EQ(TypeOf("notes.txt", head), "text/plain");
}

TEST_F(MimeType, A_measurement_can_be_read_by_any_text_editor) {
    EXPECT_TRUE(QMimeDatabase().mimeTypeForName(measurementType).inherits("text/plain"));
}

TEST_F(MimeType, The_desktop_entry_opens_them_with_the_program) {
    QSettings entry(packaging + "/vantrel.desktop", QSettings::IniFormat);
    entry.beginGroup("Desktop Entry");
    EXPECT_EQ(entry.value("Exec").toString(), "vantrel %f");
    // The entry's list ends with a semicolon, behind which an ini file's comment begins.
    EXPECT_EQ(entry.value("MimeType").toString(), measurementType);
}

} // namespace
