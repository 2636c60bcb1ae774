#include "QtPrinterTest.h"

#include "base/RunTimeError.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QFile>

TEST_F(QtPrinterTest, A_disk_that_becomes_full_is_an_error_and_leaves_the_older_file_whole) {
    PrintTable(1);
    QFile older(file);
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    const QByteArray before = older.readAll();
    older.close();
    const FullDisk disk(4096);

    try {
        PrintTable(200);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(std::string(error.what()).ends_with("report.pdf: Disk full")) << error.what();
    }

    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    EXPECT_EQ(older.readAll(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("report.pdf"));
}
