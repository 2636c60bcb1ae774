#include "screens/Report/WholeRunPanel.h"

#include "platform/qt/Text.h"
#include "report/GraphSpan.h"
#include "report/PrintJob.h"
#include "report/RunCursors.h"
#include "report/SpanMoves.h"
#include "report/WholeRun.h"
#include "screens/controls/OverviewGraph.h"
#include "screens/controls/SpanPlot.h"
#include "screens/controls/Wiring.h"
#include "ui_WholeRunPanel.h"

#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

namespace SpanMoves = Mreport::SpanMoves;
namespace WholeRun = Mreport::WholeRun;
using Mreport::RecordSpan;

constexpr std::uint64_t readAtOnce_bytes = std::uint64_t{256} * 1024;
constexpr qint64 readingTime_ms = 5;
constexpr qint64 paintEvery_ms = 60;     // while the overview fills
constexpr std::int64_t atOnce = 4000;    // records of a span that is read before it is drawn
constexpr std::int64_t fineGroups = 300; // of the overview, enough to draw a span from it

} // namespace

WholeRunPanel::WholeRunPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::WholeRunPanel>()) {
    ui_->setupUi(this);
    tmrSlice_.setObjectName("tmrSlice");
    tmrSlice_.setInterval(0);
    ui_->tblStatistics->hide();
    ConnectControls();
    Clear();
}

WholeRunPanel::~WholeRunPanel() = default;

void WholeRunPanel::ConnectControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->picChoices, &SpanChoices::Changed, "cboAxis", &WholeRunPanel::ChoicesChanged);
    wire(ui_->graOverview, &OverviewGraph::SpanChosen, "graOverview", &WholeRunPanel::ChooseSpan);
    wire(&tmrSlice_, &QTimer::timeout, "graOverview", &WholeRunPanel::tmrSlice_Timer);
    connect(ui_->picChoices, &SpanChoices::QuantityChosen, this, &WholeRunPanel::QuantityChosen);
    connect(ui_->graOverview, &OverviewGraph::FlagClicked, this, &WholeRunPanel::RecordWanted);
    ui_->graOverview->CommentText = [this](const auto& group) {
        return CommentOf(group.commentOffset);
    };
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
    ui_->picChoices->Recall();
    ChoicesChanged();
}

void WholeRunPanel::Clear() {
    tmrSlice_.stop();
    open_ = spanStarted_ = false;
    span_.Clear();
    overview_.Clear();
    spanRun_.Clear();
    ui_->graOverview->SetRun(nullptr, {});
    ui_->graOverview->SetSpan({});
    ui_->tblStatistics->setRowCount(0);
    ui_->picChoices->ShowQuantities({}, Quantity::mV);
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
    const Quantity quantity = shown_->unitCode;
    ui_->picChoices->ShowQuantities(WholeRun::QuantitiesOf(*file_), quantity);
    series_ = WholeRun::Series(*file_, quantity);
    columns_ = WholeRun::ColumnsOf(*file_, quantity, series_);
    const std::int64_t records = WholeRun::Records(file_->pages);
    overview_.Start(file_->pages.Source(), WholeRun::Pieces(file_->pages),
                    {WholeRun::Wish(*file_, quantity), columns_, {0, records}, true, Span().first});
    std::vector<int> styles;
    for (const int number : series_)
        styles.push_back(number - 1);
    ui_->graOverview->SetRun(&overview_, styles);
    sincePainted_.start();
    tmrSlice_.start();
    ChoicesChanged();
}

void WholeRunPanel::FileGrown() {
    if (!open_)
        return;
    const bool whole = span_.Chosen() && Span() == overview_.Span();
    if (!overview_.Grow(WholeRun::Pieces(file_->pages)))
        return FileReady();
    if (whole) { // it stays the whole one
        span_.Choose(overview_.Span());
        spanRun_.Grow(WholeRun::Pieces(file_->pages));
        ui_->graOverview->SetSpan(Span());
    }
    ui_->graOverview->RunChanged();
    tmrSlice_.start();
}

void WholeRunPanel::ChoicesChanged() {
    const SpanChoices& choices = *ui_->picChoices;
    ui_->graOverview->SetScales(choices.OwnScales(), choices.Log());
    ui_->tblStatistics->setVisible(choices.Statistics());
    ShowSpan();
}

void WholeRunPanel::PageSpanDrawn(int page, Mreport::PageRecord end, std::int32_t points) {
    const std::int64_t first = WholeRun::FirstOfPage(file_->pages, page);
    const std::int64_t last = first + end.number;
    if (span_.GraphShows({std::max(last - std::max(points, 0), first), last}))
        ShowSpan();
}

void WholeRunPanel::BackToPageSpan() {
    span_.BackToGraph();
    ShowSpan();
}

void WholeRunPanel::ZoomSpan(double factor, double share) {
    ChooseSpan(SpanMoves::Zoomed(Span(), factor, share));
}

void WholeRunPanel::MoveSpan(double lengths) {
    const auto records = std::llround(lengths * static_cast<double>(Span().Count()));
    ChooseSpan(SpanMoves::Moved(Span(), records));
}

void WholeRunPanel::BringIntoSpan(std::int64_t place) {
    if (place < Span().first || place >= Span().end)
        ChooseSpan(SpanMoves::Around(Span(), place));
}

/// Kept within the run; one that the viewer's own graph can show is shown there.
void WholeRunPanel::ChooseSpan(const RecordSpan& span) {
    if (!open_)
        return;
    span_.Choose(SpanMoves::Within(span, overview_.Span().Count()));
    const auto place = span_.PlaceInGraph(file_->pages);
    if (place && !ui_->picChoices->WantsOtherDrawing()) {
        Q_EMIT PageSpanWanted(place->page, {static_cast<std::int32_t>(place->end)});
        return;
    }
    ShowSpan();
}

void WholeRunPanel::ShowSpan() {
    if (!open_)
        return;
    ui_->graOverview->SetSpan(Span());
    const SpanChoices& choices = *ui_->picChoices;
    const bool draws =
        (span_.Chosen() && !span_.PlaceInGraph(file_->pages)) || choices.WantsOtherDrawing();
    if (draws || choices.Statistics())
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
    spanRun_.Observe([this, open = std::int64_t{-1}](std::int64_t place,
                                                     const Mreport::FoundRecord& record) mutable {
        if (std::exchange(open, record.ended ? -1 : place) == place)
            return; // told again, now that it has ended
        for (std::size_t s = 0; s < columns_.size(); ++s)
            statistics_.Take(s, Mreport::ValueIn(record.values, columns_[s]), record.time);
    });
    spanRun_.Start(file_->pages.Source(), WholeRun::Pieces(file_->pages),
                   {WholeRun::Wish(*file_, shown_->unitCode), columns_, Span(),
                    Span() == overview_.Span(), Span().first});
    if (Span().Count() <= atOnce)
        while (spanRun_.Step(readAtOnce_bytes)) {
        }
    if (SpanIsRead())
        return SpanRead();
    if (Span().Count() / overview_.RecordsPerGroup() >= fineGroups)
        DrawSpan(overview_);
    tmrSlice_.start();
}

bool WholeRunPanel::SpanIsRead() const {
    return !spanStarted_ || spanRun_.Complete();
}

void WholeRunPanel::SpanRead() {
    DrawSpan(spanRun_);
    std::vector<StatisticsTable::Series> rows;
    for (const int number : series_)
        rows.push_back({WholeRun::SeriesName(shown_->unitCode, number), number - 1});
    ui_->tblStatistics->Show(Mreport::UnitText(shown_->unitCode), rows, statistics_);
}

bool WholeRunPanel::Complete() const {
    return !open_ || (overview_.Complete() && SpanIsRead());
}

void WholeRunPanel::tmrSlice_Timer() {
    QElapsedTimer clock;
    clock.start();
    const bool spanWasRead = SpanIsRead();
    auto failed = qScopeGuard([this] { Clear(); }); // a medium that fails is told of once
    while (!Complete() && clock.elapsed() < readingTime_ms) {
        if (!SpanIsRead())
            spanRun_.Step(readAtOnce_bytes);
        else
            overview_.Step(readAtOnce_bytes);
    }
    failed.dismiss();
    if (!spanWasRead && SpanIsRead())
        SpanRead();
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
    picture.span = Span();
    for (std::size_t s = 0; s < series_.size(); ++s)
        if (std::ranges::find(selected, series_[s]) != selected.end())
            picture.series.push_back(
                {Text::ToQt(WholeRun::SeriesName(shown_->unitCode, series_[s])), s,
                 series_[s] - 1});
    picture.title = Text::ToQt(Mreport::ReportTitle(*file_, Mreport::PrintKind::graph));
    picture.unit = Text::ToQt(Mreport::UnitText(shown_->unitCode));
    picture.emptyText = Text::ToQt(Mreport::EmptyGraphText(*file_, *shown_));
    picture.axis = ui_->picChoices->Axis();
    picture.log = ui_->picChoices->Log();
    picture.ownScales = ui_->picChoices->OwnScales();
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

QString WholeRunPanel::CommentOf(std::uint64_t offset) const {
    Mreport::RecordScan scan(file_->pages.Source(), {offset, file_->pages.NextOffset()}, {});
    Mreport::FoundRecord record;
    if (!scan.Next(record))
        return {};
    return QString("Record %1: ").arg(record.number) +
           Text::ToQt(file_->pages.Decoded(record.comment));
}
