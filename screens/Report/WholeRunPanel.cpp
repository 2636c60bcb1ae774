#include "screens/Report/WholeRunPanel.h"

#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/PrintJob.h"
#include "report/RunCursors.h"
#include "report/WholeRun.h"
#include "screens/controls/OverviewGraph.h"
#include "screens/controls/SpanPlot.h"
#include "screens/controls/Wiring.h"
#include "ui_WholeRunPanel.h"

#include <QApplication>
#include <QClipboard>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace {

namespace WholeRun = Mreport::WholeRun;
using Mreport::RecordSpan;
using Mreport::RunAxis;

constexpr int axisTime = 1; // entry of cboAxis
constexpr std::uint64_t sliceBytes = std::uint64_t{256} * 1024;
constexpr qint64 sliceTime_ms = 5;
constexpr qint64 paintEvery_ms = 60;     // while the overview fills
constexpr std::int64_t atOnce = 4000;    // records of a span that is read before it is drawn
constexpr std::int64_t fineGroups = 300; // of the overview, enough to draw a span from it
constexpr int mostRows = 5;

constexpr auto section = "Report";
constexpr auto keyAxis = "Axis";
constexpr auto keyLog = "Log";
constexpr auto keyOwnScales = "OwnScales";
constexpr auto keyStatistics = "Statistics";

} // namespace

WholeRunPanel::WholeRunPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::WholeRunPanel>()) {
    ui_->setupUi(this);
    tmrSlice_.setObjectName("tmrSlice");
    tmrSlice_.setInterval(0);
    const auto heading = Mreport::StatisticsHeading("");
    ui_->tblStatistics->setColumnCount(static_cast<int>(heading.size()));
    ui_->tblStatistics->hide();
    ConnectControls();
    Clear();
}

WholeRunPanel::~WholeRunPanel() = default;

void WholeRunPanel::ConnectControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->cboQuantity, &QComboBox::currentIndexChanged, "cboQuantity",
         &WholeRunPanel::cboQuantity_Click);
    wire(ui_->cboAxis, &QComboBox::currentIndexChanged, "cboAxis", &WholeRunPanel::cboAxis_Click);
    wire(ui_->chkLog, &QCheckBox::toggled, "chkLog", &WholeRunPanel::chkLog_Click);
    wire(ui_->chkOwnScales, &QCheckBox::toggled, "chkOwnScales",
         &WholeRunPanel::chkOwnScales_Click);
    wire(ui_->chkStatistics, &QCheckBox::toggled, "chkStatistics",
         &WholeRunPanel::chkStatistics_Click);
    wire(ui_->graOverview, &OverviewGraph::SpanChosen, "graOverview",
         &WholeRunPanel::graOverview_SpanChosen);
    wire(&tmrSlice_, &QTimer::timeout, "graOverview", &WholeRunPanel::tmrSlice_Timer);
    connect(ui_->graOverview, &OverviewGraph::FlagClicked, this, &WholeRunPanel::RecordWanted);
    ui_->graOverview->CommentText = [this](const auto& group) {
        return CommentOf(group.commentOffset);
    };
    auto* copy = new QShortcut(QKeySequence::Copy, ui_->tblStatistics);
    copy->setContext(Qt::WidgetWithChildrenShortcut);
    wire(copy, &QShortcut::activated, "tblStatistics", &WholeRunPanel::CopyStatistics);
}

void WholeRunPanel::Attach(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown,
                           SpanPlot& plot) {
    file_ = &file;
    shown_ = &shown;
    plot_ = &plot;
    plot.hide();
    const Wiring wire(*this, guard_, "Report");
    wire(&plot, &SpanPlot::CursorsMoved, "graSpan", &WholeRunPanel::TellCursors);
    wire(&plot, &SpanPlot::MoveWanted, "graSpan", &WholeRunPanel::MoveSpan);
    connect(&plot, &SpanPlot::ZoomWanted, this, &WholeRunPanel::ZoomSpan);
    RecallChoices();
}

/// The choices of how a span is drawn outlive the program.
void WholeRunPanel::RecallChoices() {
    const platform::ProfileFile& profile = platform::Current().profile;
    const auto chosen = [&profile](const char* key) {
        return profile.GetInt(section, key, 0) == 1;
    };
    const QSignalBlocker axis(ui_->cboAxis);
    const QSignalBlocker log(ui_->chkLog);
    const QSignalBlocker ownScales(ui_->chkOwnScales);
    const QSignalBlocker statistics(ui_->chkStatistics);
    ui_->cboAxis->setCurrentIndex(chosen(keyAxis) ? axisTime : 0);
    ui_->chkLog->setChecked(chosen(keyLog));
    ui_->chkOwnScales->setChecked(chosen(keyOwnScales));
    ui_->chkStatistics->setChecked(chosen(keyStatistics));
    ui_->tblStatistics->setVisible(chosen(keyStatistics));
    ui_->graOverview->SetOwnScales(chosen(keyOwnScales));
}

void WholeRunPanel::RememberChoices() {
    platform::ProfileFile& profile = platform::Current().profile;
    const auto write = [&profile](const char* key, bool chosen) {
        profile.Write(section, key, chosen ? "1" : "0");
    };
    write(keyAxis, ui_->cboAxis->currentIndex() == axisTime);
    write(keyLog, ui_->chkLog->isChecked());
    write(keyOwnScales, ui_->chkOwnScales->isChecked());
    write(keyStatistics, ui_->chkStatistics->isChecked());
}

void WholeRunPanel::Clear() {
    tmrSlice_.stop();
    open_ = chosen_ = false;
    spanStarted_ = false;
    span_ = pageSpan_ = {};
    overview_.Clear();
    spanRun_.Clear();
    ui_->graOverview->SetRun(nullptr, {});
    ui_->graOverview->SetSpan({});
    ui_->tblStatistics->setRowCount(0);
    const QSignalBlocker quiet(ui_->cboQuantity);
    ui_->cboQuantity->clear();
    setEnabled(false);
    if (plot_ != nullptr)
        plot_->Show({});
    if (drawsSpan_) {
        drawsSpan_ = false;
        Q_EMIT DrawsSpanChanged();
    }
}

void WholeRunPanel::FileReady() {
    if (file_->path.empty())
        return;
    open_ = true;
    setEnabled(true);
    ShowQuantities();
    series_ = WholeRun::Series(*file_, shown_->unitCode);
    columns_ = WholeRun::ColumnsOf(*file_, shown_->unitCode, series_);
    const std::int64_t records = WholeRun::Records(file_->pages);
    overview_.Start(
        file_->pages.Source(), WholeRun::Pieces(file_->pages),
        {WholeRun::Wish(*file_, shown_->unitCode), columns_, {0, records}, true, span_.first});
    std::vector<int> styles;
    for (const int number : series_)
        styles.push_back(number - 1);
    ui_->graOverview->SetRun(&overview_, styles);
    sincePainted_.start();
    tmrSlice_.start();
    ShowSpan();
}

void WholeRunPanel::FileGrown() {
    if (!open_)
        return;
    if (!overview_.Grow(WholeRun::Pieces(file_->pages)))
        return FileReady();
    ui_->graOverview->RunChanged();
    tmrSlice_.start();
}

void WholeRunPanel::ShowQuantities() {
    const QSignalBlocker quiet(ui_->cboQuantity);
    ui_->cboQuantity->clear();
    for (const Quantity quantity : WholeRun::QuantitiesOf(*file_))
        ui_->cboQuantity->addItem(Text::ToQt(Mreport::UnitText(quantity)),
                                  static_cast<int>(quantity));
    ui_->cboQuantity->setCurrentIndex(
        ui_->cboQuantity->findData(static_cast<int>(shown_->unitCode)));
    ui_->chkLog->setEnabled(shown_->unitCode == Quantity::ppm ||
                            shown_->unitCode == Quantity::mol_l);
}

void WholeRunPanel::cboQuantity_Click(int Index) {
    if (Index >= 0)
        Q_EMIT QuantityChosen(static_cast<Quantity>(ui_->cboQuantity->itemData(Index).toInt()));
}

void WholeRunPanel::cboAxis_Click(int) {
    RememberChoices();
    ShowSpan();
}

void WholeRunPanel::chkLog_Click(bool) {
    RememberChoices();
    ShowSpan();
}

void WholeRunPanel::chkOwnScales_Click(bool checked) {
    RememberChoices();
    ui_->graOverview->SetOwnScales(checked);
    ShowSpan();
}

void WholeRunPanel::chkStatistics_Click(bool checked) {
    RememberChoices();
    ui_->tblStatistics->setVisible(checked);
    ShowSpan();
}

void WholeRunPanel::PageSpanDrawn(int page, Mreport::PageRecord end, std::int32_t points) {
    const std::int64_t first = WholeRun::FirstOfPage(file_->pages, page);
    const std::int64_t last = first + end.number;
    pageSpan_ = {std::max(last - std::max(points, 0), first), last};
    if (chosen_)
        return;
    span_ = pageSpan_;
    if (open_)
        ShowSpan();
}

void WholeRunPanel::BackToPageSpan() {
    chosen_ = false;
    span_ = pageSpan_;
    if (open_)
        ShowSpan();
}

void WholeRunPanel::graOverview_SpanChosen(const RecordSpan& span) {
    ChooseSpan(span);
}

void WholeRunPanel::ZoomSpan(double factor, double share) {
    const auto length = static_cast<double>(span_.Count());
    const double wanted = factor > 1 ? std::ceil(length * factor) : std::floor(length * factor);
    const std::int64_t first = span_.first + std::llround(share * (length - wanted));
    ChooseSpan({first, first + std::max<std::int64_t>(std::llround(wanted), 2)});
}

void WholeRunPanel::MoveSpan(double lengths) {
    const auto records = std::llround(lengths * static_cast<double>(span_.Count()));
    ChooseSpan({span_.first + records, span_.end + records});
}

void WholeRunPanel::BringIntoSpan(std::int64_t place) {
    if (place >= span_.first && place < span_.end)
        return;
    const std::int64_t first = place - span_.Count() / 2;
    ChooseSpan({first, first + span_.Count()});
}

/// Kept within the run; one that the viewer's own graph can show is shown there.
void WholeRunPanel::ChooseSpan(const RecordSpan& span) {
    if (!open_)
        return;
    const std::int64_t records = overview_.Span().Count();
    const std::int64_t length = std::min(span.Count(), records);
    const std::int64_t first = std::clamp(span.first, std::int64_t{0}, records - length);
    chosen_ = true;
    span_ = {first, first + length};
    const auto place = WholeRun::PlaceInLists(file_->pages, first);
    if (place && IsPageSpan() && !WantsOtherDrawing()) {
        chosen_ = false;
        Q_EMIT PageSpanWanted(place->page,
                              {static_cast<std::int32_t>(place->inPage + span_.Count())});
        return;
    }
    ShowSpan();
}

/// True for a span that the viewer's own graph shows: as long as its own, within one page whose
/// record numbers follow one another.
bool WholeRunPanel::IsPageSpan() const {
    if (span_ == pageSpan_)
        return true;
    const auto place = WholeRun::PlaceInLists(file_->pages, span_.first);
    if (!place)
        return false;
    const auto range = file_->pages.Records(place->page);
    const std::int64_t records = range->count;
    return std::int64_t{range->last} - range->first + 1 == records &&
           span_.Count() == std::min<std::int64_t>(records, Mreport::spanLength) &&
           place->inPage + span_.Count() <= records;
}

bool WholeRunPanel::WantsOtherDrawing() const {
    return ui_->cboAxis->currentIndex() == axisTime || ui_->chkOwnScales->isChecked() ||
           (ui_->chkLog->isEnabled() && ui_->chkLog->isChecked());
}

void WholeRunPanel::ShowSpan() {
    if (!open_)
        return;
    ui_->graOverview->SetSpan(span_);
    const bool draws = (chosen_ && !IsPageSpan()) || WantsOtherDrawing();
    if (draws || ui_->chkStatistics->isChecked())
        StartSpan();
    else
        spanStarted_ = false;
    if (draws == drawsSpan_)
        return;
    drawsSpan_ = draws;
    Q_EMIT DrawsSpanChanged();
}

/// Reads the span; until that has been done, a long one is drawn from the overview.
void WholeRunPanel::StartSpan() {
    spanStarted_ = true;
    statistics_ = Mreport::SpanStatistics(columns_.size());
    spanRun_.Observe([this](std::int64_t, const Mreport::FoundRecord& record) {
        for (std::size_t s = 0; s < columns_.size(); ++s)
            statistics_.Take(s, Mreport::ValueIn(record.values, columns_[s]), record.time);
    });
    spanRun_.Start(file_->pages.Source(), WholeRun::Pieces(file_->pages),
                   {WholeRun::Wish(*file_, shown_->unitCode), columns_, span_, false, span_.first});
    if (span_.Count() <= atOnce)
        while (spanRun_.Step(sliceBytes)) {
        }
    if (SpanIsRead()) {
        DrawSpan(spanRun_);
        ShowStatistics();
        return;
    }
    if (span_.Count() / overview_.RecordsPerGroup() >= fineGroups)
        DrawSpan(overview_);
    tmrSlice_.start();
}

bool WholeRunPanel::SpanIsRead() const {
    return !spanStarted_ || spanRun_.Complete();
}

bool WholeRunPanel::Complete() const {
    return !open_ || (overview_.Complete() && SpanIsRead());
}

void WholeRunPanel::tmrSlice_Timer() {
    QElapsedTimer clock;
    clock.start();
    const bool spanWasRead = SpanIsRead();
    while (!Complete() && clock.elapsed() < sliceTime_ms) {
        if (!SpanIsRead())
            spanRun_.Step(sliceBytes);
        else
            overview_.Step(sliceBytes);
    }
    if (!spanWasRead && SpanIsRead()) {
        DrawSpan(spanRun_);
        ShowStatistics();
    }
    const bool complete = Complete();
    if (complete)
        tmrSlice_.stop();
    if (complete || sincePainted_.elapsed() >= paintEvery_ms) {
        ui_->graOverview->RunChanged();
        sincePainted_.start();
    }
}

void WholeRunPanel::DrawSpan(const Mreport::RunOverview& run) {
    const auto selected = Mreport::Series(*file_, *shown_);
    SpanPlot::Picture picture;
    picture.run = &run;
    picture.span = span_;
    for (std::size_t s = 0; s < series_.size(); ++s)
        if (std::ranges::find(selected, series_[s]) != selected.end())
            picture.series.push_back(
                {Text::ToQt(WholeRun::SeriesName(shown_->unitCode, series_[s])), s,
                 series_[s] - 1});
    picture.title = Text::ToQt(Mreport::ReportTitle(*file_, Mreport::PrintKind::graph));
    picture.unit = Text::ToQt(Mreport::UnitText(shown_->unitCode));
    picture.axis = ui_->cboAxis->currentIndex() == axisTime ? RunAxis::time : RunAxis::record;
    picture.log = ui_->chkLog->isEnabled() && ui_->chkLog->isChecked();
    picture.ownScales = ui_->chkOwnScales->isChecked();
    plot_->Show(std::move(picture));
}

void WholeRunPanel::TellCursors() {
    const auto first = plot_->Cursor(0);
    const auto second = plot_->Cursor(1);
    if (!first || !second)
        return;
    std::vector<std::string> names;
    for (const int number : series_)
        names.push_back(WholeRun::SeriesName(shown_->unitCode, number));
    Q_EMIT CursorsTold(
        Text::ToQt(CursorText(*plot_->Shown().run, names, shown_->unitCode, *first, *second)));
}

void WholeRunPanel::ShowStatistics() {
    QTableWidget& table = *ui_->tblStatistics;
    QStringList heading;
    for (const auto& text : Mreport::StatisticsHeading(Mreport::UnitText(shown_->unitCode)))
        heading << Text::ToQt(text);
    table.setHorizontalHeaderLabels(heading);
    table.setRowCount(static_cast<int>(series_.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        const auto series = static_cast<std::size_t>(row);
        const std::string name = WholeRun::SeriesName(shown_->unitCode, series_[series]);
        table.setVerticalHeaderItem(row, new QTableWidgetItem(Text::ToQt(name)));
        const auto texts = Mreport::StatisticsTexts(statistics_.Of(series));
        for (int column = 0; column < table.columnCount(); ++column) {
            auto* item = new QTableWidgetItem(Text::ToQt(texts[static_cast<std::size_t>(column)]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table.setItem(row, column, item);
        }
    }
    table.resizeColumnsToContents();
    table.resizeRowsToContents();
    const int rows = std::clamp(table.rowCount(), 1, mostRows);
    table.setMaximumHeight(table.horizontalHeader()->sizeHint().height() +
                           rows * table.verticalHeader()->sectionSize(0) + 2 * table.frameWidth() +
                           2);
}

void WholeRunPanel::CopyStatistics() {
    const QTableWidget& table = *ui_->tblStatistics;
    QStringList lines;
    for (int row = -1; row < table.rowCount(); ++row) {
        QStringList cells{row < 0 ? QString() : table.verticalHeaderItem(row)->text()};
        for (int column = 0; column < table.columnCount(); ++column)
            cells
                << (row < 0 ? table.horizontalHeaderItem(column) : table.item(row, column))->text();
        lines << cells.join('\t');
    }
    QApplication::clipboard()->setText(lines.join('\n'));
}

QString WholeRunPanel::CommentOf(std::uint64_t offset) const {
    Mreport::RecordScan scan(file_->pages.Source(), {offset, file_->pages.NextOffset()}, {});
    Mreport::FoundRecord record;
    if (!scan.Next(record))
        return {};
    return tr("Record %1: %2")
        .arg(record.number)
        .arg(Text::ToQt(file_->pages.Decoded(record.comment)));
}
