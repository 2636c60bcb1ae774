#include "screens/support/ScreenTest.h"

#include "link/CommPort.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <map>

ScreenTest::ScreenTest() {
    platform.desktop.onEvents = [this] {
        QCoreApplication::processEvents();
        platform.clock.monotonic += std::chrono::milliseconds(1); // waits come to their end
    };
}

ScreenTest::~ScreenTest() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ScreenTest::LeadFirstPortNowhere() const {
#ifdef Q_OS_UNIX
    const auto ports = platform.places.ConfigurationFolder() / "ports";
    std::filesystem::create_directories(ports);
    std::filesystem::create_symlink("nowhere", ports / "com1");
#endif
}

std::vector<int> ScreenTest::IndicesOf(const QObject& form, const QString& name) {
    std::vector<int> indices;
    const QRegularExpression pattern("^" + name + "_(\\d+)$");
    for (const QObject* control : form.findChildren<QObject*>(pattern))
        indices.push_back(control->objectName().mid(name.size() + 1).toInt());
    std::sort(indices.begin(), indices.end());
    return indices;
}

void ScreenTest::Click(const QWidget& form, const QString& name) {
    auto& button = Find<QAbstractButton>(form, name);
    ASSERT_TRUE(button.isVisibleTo(&form)) << name.toStdString() << " is hidden";
    ASSERT_TRUE(button.isEnabled()) << name.toStdString() << " is disabled";
    QTest::mouseClick(&button, Qt::LeftButton);
}

void ScreenTest::Choose(const QWidget& form, const QString& name) {
    auto& action = Find<QAction>(form, name);
    ASSERT_TRUE(action.isEnabled()) << name.toStdString() << " is disabled";
    action.trigger();
}

void ScreenTest::Pick(const QWidget& form, const QString& name, const QString& text) {
    auto& box = Find<QComboBox>(form, name);
    ASSERT_TRUE(box.isVisibleTo(&form) && box.isEnabled()) << name.toStdString();
    const int entry = box.findText(text);
    ASSERT_GE(entry, 0) << name.toStdString() << " has no entry " << text.toStdString();
    box.setCurrentIndex(entry);
    Q_EMIT box.activated(entry);
}

void ScreenTest::Type(const QWidget& form, const QString& name, const QString& text) {
    auto& box = Find<QLineEdit>(form, name);
    ASSERT_TRUE(box.isVisibleTo(&form) && box.isEnabled() && !box.isReadOnly())
        << name.toStdString();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    for (const QChar character : text) { // QTest's own typing knows Latin letters only
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, character);
        QCoreApplication::sendEvent(&box, &press);
    }
}

void ScreenTest::Tick(const QObject& form, const QString& timerName) {
    auto* timer = form.findChild<QTimer*>(timerName);
    ASSERT_NE(timer, nullptr) << timerName.toStdString();
    ASSERT_TRUE(timer->isActive()) << timerName.toStdString() << " does not run";
    ASSERT_TRUE(QMetaObject::invokeMethod(timer, "timeout"));
}

void ScreenTest::Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ScreenTest::Show(QWidget& form) {
    form.show();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    Settle();
}

void ScreenTest::Arrive(const std::array<int, 8>& tenths) {
    link->serial.Arrive(FrameOf(tenths));
}

void ScreenTest::TimeOut() {
    link->TimeoutTicks();
}

namespace {

bool IsReachedByUser(const QWidget& control) {
    return qobject_cast<const QAbstractButton*>(&control) != nullptr ||
           qobject_cast<const QLineEdit*>(&control) != nullptr ||
           qobject_cast<const QComboBox*>(&control) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&control) != nullptr;
}

QString MnemonicText(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return label->buddy() != nullptr ? label->text() : QString();
    if (const auto* box = qobject_cast<const QGroupBox*>(&control))
        return box->title();
    return {};
}

} // namespace

std::vector<std::string> ControlsWithoutName(const QWidget& form) {
    std::vector<std::string> found;
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const QString name = control->objectName();
        if (!IsReachedByUser(*control) || name.isEmpty() || name.startsWith("qt_"))
            continue;
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(control);
        if (accessible == nullptr || accessible->text(QAccessible::Name).isEmpty())
            found.push_back(name.toStdString());
    }
    return found;
}

std::vector<std::string> SharedMnemonics(const QWidget& form) {
    std::map<QString, int> uses;
    const auto note = [&uses](const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty())
            ++uses[key.toString()];
    };
    for (const QWidget* control : form.findChildren<QWidget*>()) {
        if (!control->isVisibleTo(&form))
            continue;
        note(MnemonicText(*control));
        if (const auto* tabs = qobject_cast<const QTabBar*>(control))
            for (int tab = 0; tab < tabs->count(); ++tab)
                note(tabs->tabText(tab));
        if (const auto* bar = qobject_cast<const QMenuBar*>(control))
            for (const QAction* menu : bar->actions())
                note(menu->text());
    }
    std::vector<std::string> shared;
    for (const auto& [key, count] : uses)
        if (count > 1)
            shared.push_back(key.toStdString());
    return shared;
}

std::vector<std::string> CutTexts(const QWidget& form) {
    std::vector<std::string> cut;
    const auto look = [&cut](const QWidget& control, QSize needed) {
        if (control.isVisible() &&
            (control.width() < needed.width() || control.height() < needed.height()))
            cut.push_back(control.objectName().toStdString());
    };
    for (const QLabel* label : form.findChildren<QLabel*>())
        if (label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored)
            look(*label, label->minimumSizeHint());
    for (const QAbstractButton* button : form.findChildren<QAbstractButton*>())
        look(*button, button->fontMetrics().size(Qt::TextShowMnemonic, button->text()));
    for (const QComboBox* list : form.findChildren<QComboBox*>())
        look(*list, list->minimumSizeHint());
    return cut;
}

void ExpectFitsAtDoubleScale(const QWidget& form) {
    constexpr QSize screen(1024 / 2, 728 / 2); // less what a desktop's panel takes
    const QSize least = form.minimumSizeHint().expandedTo(form.minimumSize());
    EXPECT_LE(least.width(), screen.width()) << form.objectName().toStdString();
    EXPECT_LE(least.height(), screen.height()) << form.objectName().toStdString();
}

namespace {

/// Lets no more events through than a form needs for a layout.
class EventLimit : public QObject {
public:
    EventLimit() { qApp->installEventFilter(this); }

    void Begin() { events_ = 0; }
    bool IsPassed() const { return events_ > most; }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* /*event*/) override { return ++events_ > most; }

private:
    static constexpr int most = 20000;
    int events_ = 0;
};

double Luminance(const QColor& colour) {
    const auto channel = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
           0.0722 * channel(colour.blueF());
}

} // namespace

void ExpectRestsInEverySize(QWidget& form) {
    constexpr int step = 7; // a scroll bar is twice as wide
    constexpr int highest = 760;
    const QSize least = form.minimumSizeHint().expandedTo(form.minimumSize());
    EventLimit limit;
    for (const int width : {least.width(), least.width() + 150, 900})
        for (int height = least.height(); height < highest; height += step) {
            limit.Begin();
            form.resize(width, height);
            QCoreApplication::processEvents();
            ASSERT_FALSE(limit.IsPassed())
                << form.objectName().toStdString() << " at " << width << " x " << height;
        }
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}
