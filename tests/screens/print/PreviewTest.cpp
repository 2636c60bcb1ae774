#include "PdfText.h"

#include "base/RunTimeError.h"
#include "platform/qt/QtPrinting.h"
#include "screens/support/ScreenTest.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

using platform::PrintOutcome;

/// Drives the preview and the print dialog as a user does, from the event loops that they run.
class Preview : public ScreenTest {
protected:
    /// Called at each turn of an event loop with the dialog on top; a user waits while the pointer
    /// is the hourglass.
    void WithDialogs(std::function<void(QDialog&)> act) {
        user_.setInterval(10);
        QObject::connect(&user_, &QTimer::timeout, &user_, [this, act = std::move(act)] {
            if (platform.desktop.pointer == platform::MousePointer::hourglass)
                return;
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                act(*dialog);
        });
        user_.start();
    }

    static void ThreePages(platform::Printer& printer) {
        for (int page = 1; page <= 3; ++page) {
            if (page > 1)
                printer.NewPage();
            printer.PrintText("This is page " + std::to_string(page));
        }
    }

    platform::QtPrinting printing;

private:
    QTimer user_;
};

TEST_F(Preview, Shows_every_page_and_prints_nothing_when_it_is_closed) {
    int pages = 0;
    QString title;
    WithDialogs([&](QDialog& dialog) {
        pages = dialog.findChild<QPrintPreviewWidget*>()->pageCount();
        title = dialog.windowTitle();
        dialog.reject();
    });

    EXPECT_EQ(printing.Print("Table", ThreePages), PrintOutcome::cancelled);

    EXPECT_EQ(pages, 3);
    EXPECT_EQ(title, "Print Preview - Table");
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(Preview, The_print_button_is_in_reach_without_opening_the_rest_of_the_tool_bar) {
    bool visible = false;
    WithDialogs([&](QDialog& dialog) {
        for (const QToolButton* button : dialog.findChildren<QToolButton*>())
            visible = visible || (button->text() == "Print" && button->isVisible());
        dialog.reject();
    });

    printing.Print("Table", ThreePages);

    EXPECT_TRUE(visible);
}

TEST_F(Preview, The_name_that_is_suggested_for_a_file_holds_no_sign_that_a_file_system_refuses) {
    QString suggested;
    WithDialogs([&](QDialog& dialog) {
        if (auto* preview = qobject_cast<QPrintPreviewDialog*>(&dialog))
            suggested = preview->printer()->docName();
        dialog.reject();
    });

    printing.Print("4-Channel - Well 7/8: \"a\" Report: Table", ThreePages);

    EXPECT_EQ(suggested, "4-Channel - Well 78 a Report Table");
}

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

TEST_F(Preview, A_document_that_fails_closes_the_preview_and_tells_why) {
    EXPECT_THROW(printing.Print("Table", [](platform::Printer&) { throw RunTimeError("no text"); }),
                 RunTimeError);
}

TEST_F(Preview, ESC_while_the_pages_are_drawn_closes_the_preview) {
    const auto pressEscape = [](platform::Printer& printer) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(qApp, &escape);
        EXPECT_TRUE(printer.StopRequested());
    };

    EXPECT_EQ(printing.Print("Table", pressEscape), PrintOutcome::stopped);
}

TEST_F(Preview, A_click_while_the_pages_are_drawn_waits_outside) {
    QWidget button;
    int presses = 0;
    class Counter : public QObject {
    public:
        explicit Counter(int& presses) : presses_(presses) {}
        bool eventFilter(QObject*, QEvent* event) override {
            presses_ += event->type() == QEvent::MouseButtonPress ? 1 : 0;
            return false;
        }

    private:
        int& presses_;
    } counter(presses);
    button.installEventFilter(&counter);
    WithDialogs([](QDialog& dialog) { dialog.reject(); });

    printing.Print("Table",
                   [&](platform::Printer&) { QTest::mouseClick(&button, Qt::LeftButton); });
    EXPECT_EQ(presses, 0);

    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(presses, 1);
}

} // namespace
