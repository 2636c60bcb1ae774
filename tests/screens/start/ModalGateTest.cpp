#include "program/ModalGate.h"

#include <QDialog>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

class ModalGateTest : public testing::Test {
protected:
    ModalGateTest() {
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->show();
        other.show();
    }

    ~ModalGateTest() override { delete form; }

    /// Shown over its parent as a box is; it lies on the heap here, so that what goes wrong fails
    /// and does not crash.
    static QDialog& Open(QWidget* parent, Qt::WindowModality modality = Qt::ApplicationModal) {
        auto* const box = new QDialog(parent);
        box->setWindowModality(modality);
        box->show();
        return *box;
    }

    static void RunEvents() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    ModalGate gate;
    QPointer<QWidget> form = new QWidget;
    QWidget other;
};

TEST_F(ModalGateTest, A_form_does_not_close_under_its_own_question) {
    const QPointer<QDialog> box = &Open(form);
    EXPECT_FALSE(form->close());
    RunEvents();
    ASSERT_FALSE(form.isNull());
    ASSERT_FALSE(box.isNull());
    EXPECT_TRUE(form->isVisible());
}

TEST_F(ModalGateTest, A_question_keeps_the_other_windows_open_too) {
    Open(form);
    EXPECT_FALSE(other.close());
    EXPECT_TRUE(other.isVisible());
}

TEST_F(ModalGateTest, A_screen_that_holds_its_own_parent_alone_leaves_the_others_free) {
    Open(form, Qt::WindowModal);
    EXPECT_FALSE(form->close());
    EXPECT_TRUE(other.close());
}

TEST_F(ModalGateTest, The_question_itself_closes_and_then_its_form) {
    EXPECT_TRUE(Open(form).close());
    EXPECT_TRUE(form->close());
    RunEvents();
    EXPECT_TRUE(form.isNull());
}

TEST_F(ModalGateTest, What_stands_over_the_question_closes) {
    QDialog& box = Open(form);
    QWidget helper(&box, Qt::Window);
    helper.show();
    EXPECT_TRUE(helper.close());
    EXPECT_TRUE(box.close());
}

TEST_F(ModalGateTest, A_question_asked_while_another_waits_closes_first) {
    QDialog& first = Open(form);
    const auto second = std::make_unique<QDialog>(); // where no window was active
    second->setWindowModality(Qt::ApplicationModal);
    second->show();
    EXPECT_FALSE(first.close());
    EXPECT_TRUE(second->close());
    EXPECT_TRUE(first.close());
}

} // namespace
