#include "PreviewTest.h"

#include "base/RunTimeError.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QTest>
#include <QToolButton>

#include <utility>

using platform::PrintOutcome;

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

// Qt frees the pages of a print run that is aborted twice if they are a preview's.
TEST_F(Preview, ESC_between_two_pages_closes_the_preview) {
    bool stoppedWhileDrawing = true;
    const auto pressEscapeLater = [&](platform::Printer& printer) {
        ThreePages(printer);
        QCoreApplication::postEvent(
            qApp, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        stoppedWhileDrawing = printer.StopRequested();
    };

    EXPECT_EQ(printing.Print("Table", pressEscapeLater), PrintOutcome::stopped);

    EXPECT_FALSE(stoppedWhileDrawing);
}

/// Counts how often the pages of a preview are painted while they are drawn anew.
class PaintCounter : public QObject {
public:
    int paintings = 0;
    bool drawing = false;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (drawing && event->type() == QEvent::Paint)
            ++paintings;
        return false;
    }
};

// Its pages have gone by then; on a screen a tool tip that passes over it is enough.
TEST_F(Preview, What_is_shown_is_not_painted_while_its_pages_are_drawn_anew) {
    PaintCounter counter;
    QWidget* shown = nullptr;
    bool again = false;
    WithDialogs([&](QDialog& dialog) {
        if (std::exchange(again, true))
            return dialog.reject();
        auto* const preview = dialog.findChild<QPrintPreviewWidget*>();
        shown = preview->findChild<QAbstractScrollArea*>()->viewport();
        shown->installEventFilter(&counter);
        preview->setLandscapeOrientation();
    });

    printing.Print("Table", [&](platform::Printer& printer) {
        counter.drawing = shown != nullptr;
        ThreePages(printer);
        if (shown != nullptr) {
            shown->repaint();
            shown->update();
            QCoreApplication::processEvents();
        }
        counter.drawing = false;
    });

    EXPECT_NE(shown, nullptr);
    EXPECT_EQ(counter.paintings, 0);
}

// A bar that comes makes the page smaller, which needs none then, and so on.
TEST_F(Preview, Pages_that_are_fitted_into_the_window_come_to_rest_in_every_size) {
    WithDialogs([](QDialog& dialog) {
        auto* const preview = dialog.findChild<QPrintPreviewWidget*>();
        using Widget = QPrintPreviewWidget;
        for (const auto view :
             {Widget::SinglePageView, Widget::FacingPagesView, Widget::AllPagesView})
            for (const auto zoom : {Widget::FitToWidth, Widget::FitInView}) {
                preview->setViewMode(view);
                preview->setZoomMode(zoom);
                ExpectRestsInEverySize(dialog);
            }
        dialog.reject();
    });

    EXPECT_EQ(printing.Print("Table", ThreePages), PrintOutcome::cancelled);
}

TEST_F(Preview, What_a_tool_presses_while_the_pages_are_drawn_is_pressed_in_vain) {
    int depth = 0;
    int deepest = 0;
    std::size_t pressed = 0;
    WithDialogs([](QDialog& dialog) { dialog.reject(); });

    printing.Print("Table", [&](platform::Printer& printer) {
        deepest = std::max(deepest, ++depth);
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (qobject_cast<const QPrintPreviewDialog*>(window) != nullptr)
                for (QAction* action : window->findChildren<QAction*>()) {
                    action->trigger(); // orientation, page setup and print would draw anew
                    ++pressed;
                }
        printer.PrintText("one page");
        --depth;
    });

    EXPECT_GT(pressed, 0U);
    EXPECT_EQ(deepest, 1);
}

TEST_F(Preview, The_buttons_serve_again_when_the_pages_are_drawn) {
    std::size_t enabled = 0;
    WithDialogs([&](QDialog& dialog) {
        for (const QAction* action : dialog.findChildren<QAction*>())
            enabled += action->isEnabled() ? 1 : 0;
        dialog.reject();
    });

    printing.Print("Table", ThreePages);

    EXPECT_GT(enabled, 0U);
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
