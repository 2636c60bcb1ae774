#include "screens/frmSrch/RunSearchPane.h"

#include "base/NumberText.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "report/RecordSearch.h"
#include "report/ShownGraph.h"
#include "report/WholeRun.h"
#include "screens/controls/SliceTime.h"
#include "screens/controls/Wiring.h"
#include "ui_RunSearchPane.h"

#include <QElapsedTimer>
#include <QScopeGuard>

namespace {

constexpr int below = 1; // entry of cboAbove
constexpr std::uint64_t searchedAtOnce_bytes = std::uint64_t{256} * 1024;

} // namespace

RunSearchPane::RunSearchPane(const Mreport::ViewedFile& file, QWidget* parent)
    : QWidget(parent), file_(file), ui_(std::make_unique<Ui::RunSearchPane>()) {
    ui_->setupUi(this);
    optSearch = ControlArray<QRadioButton>(*this, "optSearch");
    tmrSearch_.setObjectName("tmrSearch");
    tmrSearch_.setInterval(0);
    const Wiring wire(*this, guard_, "frmSrch");
    wire(optSearch, &QRadioButton::toggled, "optSearch", &RunSearchPane::optSearch_Click);
    wire(ui_->cboSeries, &QComboBox::currentIndexChanged, "cboSeries",
         &RunSearchPane::cboSeries_Click);
    wire(ui_->cmdFindNext, &QPushButton::clicked, "cmdFindNext", &RunSearchPane::FindNext);
    wire(ui_->cmdStop, &QPushButton::clicked, "cmdStop", &RunSearchPane::Stop);
    wire(&tmrSearch_, &QTimer::timeout, "tmrSearch", &RunSearchPane::tmrSearch_Timer);
    for (QLineEdit* entry : {ui_->txtText, ui_->txtTime, ui_->txtLimit}) {
        wire(entry, &QLineEdit::textChanged, "optSearch", &RunSearchPane::WishChanged);
        wire(entry, &QLineEdit::returnPressed, "optSearch", &RunSearchPane::FindNext);
    }
    for (QComboBox* choice : {ui_->cboSeries, ui_->cboQuantity, ui_->cboAbove})
        wire(choice, &QComboBox::currentIndexChanged, "optSearch", &RunSearchPane::WishChanged);
    wire(ui_->chkFromEnd, &QCheckBox::toggled, "optSearch", &RunSearchPane::WishChanged);
    AcceptCodePageOnly(*ui_->txtText);
    optSearch_Click(byNumber);
}

RunSearchPane::~RunSearchPane() = default;

void RunSearchPane::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    FillSeries();
}

std::size_t RunSearchPane::By() const {
    for (const std::size_t index : optSearch.Indices())
        if (optSearch(index).isChecked())
            return index;
    return byNumber;
}

bool RunSearchPane::ByNumber() const {
    return By() == byNumber;
}

void RunSearchPane::optSearch_Click(std::size_t Index) {
    if (Index != By()) // the one that was left
        return;
    const bool number = Index == byNumber;
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->stkWish), static_cast<QWidget*>(ui_->chkFromEnd),
          static_cast<QWidget*>(ui_->cmdFindNext), static_cast<QWidget*>(ui_->cmdStop)})
        part->setVisible(!number);
    ui_->chkFromEnd->setEnabled(Index != byTime); // the nearest in the whole file
    if (!number)
        ui_->stkWish->setCurrentIndex(static_cast<int>(Index - byComment));
    WishChanged();
    Q_EMIT ByNumberChanged(number);
}

/// Another search begins at the beginning, or at the end.
void RunSearchPane::WishChanged() {
    Stop();
    last_.reset();
}

void RunSearchPane::FillSeries() {
    const QVariant chosen = ui_->cboSeries->currentData();
    {
        const QSignalBlocker quiet(ui_->cboSeries);
        ui_->cboSeries->clear();
        for (const auto& entry : Mreport::RecordSearch(file_).Entries())
            ui_->cboSeries->addItem(Text::ToQt(entry.text), QVariant::fromValue(entry.index));
        ui_->cboSeries->setCurrentIndex(std::max(0, ui_->cboSeries->findData(chosen)));
    }
    FillQuantities();
}

void RunSearchPane::FillQuantities() {
    const QSignalBlocker quiet(ui_->cboQuantity);
    ui_->cboQuantity->clear();
    if (ui_->cboSeries->currentIndex() < 0)
        return;
    for (const auto unit :
         Mreport::RecordSearch(file_).Units(ui_->cboSeries->currentData().toUInt()))
        ui_->cboQuantity->addItem(Text::ToQt(Mreport::UnitText(unit)), static_cast<int>(unit));
}

void RunSearchPane::cboSeries_Click(int) {
    FillQuantities();
}

/// Nothing, and it is said, for an entry that cannot be searched for.
std::optional<Mreport::RunSearchWish> RunSearchPane::Wish() {
    Mreport::RunSearchWish wish;
    wish.utf8 = file_.pages.IsUtf8();
    wish.fromEnd = ui_->chkFromEnd->isChecked();
    wish.beyond = last_;
    if (By() == byValue)
        return ValueWish();
    if (By() == byTime) {
        const auto time =
            Mreport::RecordTimeReader().Read(Text::FromQt(ui_->txtTime->text().trimmed()));
        if (!time) {
            Q_EMIT Refused("Enter the time as 14:05:33 07.Mar.2003");
            return std::nullopt;
        }
        wish.what = Mreport::TimeWish{*time};
        return wish;
    }
    if (ui_->txtText->text().isEmpty())
        return std::nullopt;
    wish.what = Mreport::CommentWish{Text::FromQt(ui_->txtText->text())};
    return wish;
}

std::optional<Mreport::RunSearchWish> RunSearchPane::ValueWish() {
    const auto limit = NumberText::StrictSingle(Text::FromQt(ui_->txtLimit->text()));
    if (!limit || ui_->cboQuantity->currentIndex() < 0) {
        Q_EMIT Refused("Enter the limit as a number");
        return std::nullopt;
    }
    const auto quantity = static_cast<Quantity>(ui_->cboQuantity->currentData().toInt());
    const int index = ui_->cboSeries->currentData().toInt();
    const int number = index >= maxChannels ? index - maxChannels + 1 : index + 1;
    Mreport::RunSearchWish wish;
    wish.utf8 = file_.pages.IsUtf8();
    wish.fromEnd = ui_->chkFromEnd->isChecked();
    wish.beyond = last_;
    wish.what = Mreport::ValueWish{
        quantity, Mreport::WholeRun::ColumnsOf(file_, quantity, {number}).front(),
        static_cast<double>(*limit), ui_->cboAbove->currentIndex() != below};
    return wish;
}

void RunSearchPane::FindNext() {
    if (IsSearching() || ByNumber())
        return;
    const auto wish = Wish();
    if (!wish)
        return;
    search_ = std::make_unique<Mreport::RunSearch>(file_.pages.Source(),
                                                   Mreport::WholeRun::Pieces(file_.pages), *wish);
    ui_->cmdStop->setEnabled(true);
    Q_EMIT Searching();
    tmrSearch_.start();
}

void RunSearchPane::tmrSearch_Timer() {
    QElapsedTimer clock;
    clock.start();
    auto failed = qScopeGuard([this] { Stop(); }); // a medium that fails is told of once
    while (search_ && search_->Step(searchedAtOnce_bytes))
        if (clock.elapsed() >= sliceTime_ms)
            return failed.dismiss();
    failed.dismiss();
    if (!search_)
        return;
    tmrSearch_.stop();
    const auto found = search_->Found();
    search_.reset();
    ui_->cmdStop->setEnabled(false);
    if (!found) {
        Q_EMIT NotFound();
        return;
    }
    last_ = found->place;
    const int page = static_cast<int>(found->piece);
    Q_EMIT Found({page, file_.pages.LineAt(page, found->offset)});
}

void RunSearchPane::Stop() {
    tmrSearch_.stop();
    ui_->cmdStop->setEnabled(false);
    if (!search_)
        return;
    search_.reset();
    Q_EMIT Stopped();
}

void RunSearchPane::Forget() {
    WishChanged();
    FillSeries();
}
