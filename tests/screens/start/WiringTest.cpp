#include "screens/controls/Wiring.h"

#include <QPushButton>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class Form : public QWidget {
    Q_OBJECT

public:
    explicit Form(int& calls) : calls_(calls) {
        auto* const button = new QPushButton(this);
        button->setObjectName("button");
        auto* const element = new QPushButton(this);
        element->setObjectName("element_0");
        const Wiring wire(*this, guard_, "Form");
        wire(button, &QObject::destroyed, "button", &Form::Count);
        wire(button, &QPushButton::clicked, "button", &Form::Count);
        wire(ControlArray<QPushButton>(*this, "element"), &QObject::destroyed, "element",
             &Form::CountElement);
    }

private:
    void Count() { ++calls_; }
    void CountElement(std::size_t /*Index*/) { ++calls_; }

    EventGuard guard_{"Unexpected Error - "};
    int& calls_;
};

} // namespace

TEST(Wiring, A_control_that_goes_with_its_form_calls_no_handler_any_more) {
    int calls = 0;
    auto form = std::make_unique<Form>(calls);
    form->findChild<QPushButton*>("button")->click();
    EXPECT_EQ(calls, 1);
    form.reset();
    EXPECT_EQ(calls, 1);
}

TEST(Wiring, A_control_that_goes_before_its_form_may_tell_of_it) {
    int calls = 0;
    Form form(calls);
    delete form.findChild<QPushButton*>("button");
    EXPECT_EQ(calls, 1);
}

#include "WiringTest.moc"
