// The print dialog is Qt's own, which a test can fill in; on Windows it is the system's.

#include "PdfText.h"
#include "PreviewTest.h"

#include <QLineEdit>
#include <QPrintDialog>
#include <QTemporaryDir>
#include <QTest>

using platform::PrintOutcome;

TEST_F(Preview, Ctrl_P_prints_into_a_file_where_no_printer_is_set_up) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("pages.pdf");
    qputenv("CUPS_SERVER", folder.filePath("no-server").toLocal8Bit());
    WithDialogs([&](QDialog& dialog) {
        if (auto* print = qobject_cast<QPrintDialog*>(&dialog)) {
            print->findChild<QLineEdit*>("filename")->setText(file);
            print->accept();
            return;
        }
        QTimer::singleShot(0, &dialog,
                           [&dialog] { QTest::keyClick(&dialog, Qt::Key_P, Qt::ControlModifier); });
    });

    EXPECT_EQ(printing.Print("Table", ThreePages), PrintOutcome::printed);

    EXPECT_EQ(PdfPageCount(file), 3);
    EXPECT_EQ(PdfLines(file, 3), std::vector<std::string>{"This is page 3"});
}
