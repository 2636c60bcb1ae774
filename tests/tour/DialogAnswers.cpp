#include "tour/DialogAnswers.h"

#include "tour/Stage.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

DialogAnswers::DialogAnswers() {
    connect(&timer_, &QTimer::timeout, this, &DialogAnswers::Look);
    timer_.start(20);
}

DialogAnswers::~DialogAnswers() {
    for (const Expected& expected : expected_)
        ADD_FAILURE() << "never shown: " << expected.what.toStdString();
}

void DialogAnswers::Message(const QString& text, QMessageBox::StandardButton answer,
                            const QString& pictureName) {
    expected_.push_back({text, [=](QWidget& window) {
                             auto* box = qobject_cast<QMessageBox*>(&window);
                             if (box == nullptr || !box->text().contains(text))
                                 return false;
                             if (!pictureName.isEmpty())
                                 stage::Picture(*box, pictureName);
                             box->button(answer)->click();
                             return true;
                         }});
}

void DialogAnswers::Input(const QString& prompt, const QString& answer) {
    expected_.push_back({prompt, [=](QWidget& window) {
                             auto* box = qobject_cast<QInputDialog*>(&window);
                             if (box == nullptr || box->labelText() != prompt)
                                 return false;
                             box->setTextValue(answer);
                             box->accept();
                             return true;
                         }});
}

void DialogAnswers::File(const QString& title, const QString& file, const QString& pictureName) {
    expected_.push_back({title, [=](QWidget& window) {
                             auto* box = qobject_cast<QFileDialog*>(&window);
                             if (box == nullptr || box->windowTitle() != title)
                                 return false;
                             box->findChild<QLineEdit*>("fileNameEdit")->setText(file);
                             if (!pictureName.isEmpty())
                                 stage::Picture(*box, pictureName);
                             static_cast<QDialog*>(box)->accept();
                             return true;
                         }});
}

void DialogAnswers::Other(const char* className, const std::function<void(QWidget&)>& answer) {
    expected_.push_back({className, [=](QWidget& window) {
                             if (!window.inherits(className))
                                 return false;
                             answer(window);
                             return true;
                         }});
}

void DialogAnswers::Look() {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible() || answering_)
        return;
    const bool isBox = window->inherits("QMessageBox") || window->inherits("QInputDialog") ||
                       window->inherits("QFileDialog");
    answering_ = true;
    if (!expected_.empty() && expected_.front().answer(*window)) {
        expected_.pop_front();
    } else if (isBox) {
        const auto* message = qobject_cast<QMessageBox*>(window);
        ADD_FAILURE()
            << "unexpected box: "
            << (message != nullptr ? message->text() : window->windowTitle()).toStdString();
        static_cast<QDialog*>(window)->reject();
    }
    answering_ = false;
}
