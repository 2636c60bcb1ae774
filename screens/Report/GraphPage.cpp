#include "screens/Report/GraphPage.h"

#include "platform/qt/Text.h"
#include "report/GraphSpan.h"
#include "report/Selection.h"
#include "screens/controls/Wiring.h"
#include "ui_GraphPage.h"

#include <algorithm>

GraphPage::GraphPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::GraphPage>()) {
    ui_->setupUi(this);
    ConnectControls();
}

GraphPage::~GraphPage() = default;

void GraphPage::ConnectControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->HScroll, &QScrollBar::valueChanged, "HScroll", &GraphPage::HScroll_Change);
    wire(ui_->HScroll, &QScrollBar::sliderMoved, "HScroll", &GraphPage::HScroll_Scroll);
    connect(ui_->HScroll, &QScrollBar::sliderReleased, this, &GraphPage::ThumbReleased);
    wire(ui_->graReport, &GraphControl::PointClicked, "graReport", &GraphPage::graReport_Click);
    wire(ui_->graReport, &GraphControl::PointHovered, "graReport", &GraphPage::graReport_MouseMove);
    WholeRunPanel* run = ui_->picWholeRun;
    connect(ui_->graReport, &GraphControl::SpanZoomWanted, run, &WholeRunPanel::ZoomSpan);
    wire(run, &WholeRunPanel::QuantityChosen, "cboQuantity",
         &GraphPage::picWholeRun_QuantityChosen);
    wire(run, &WholeRunPanel::PageSpanWanted, "graOverview",
         &GraphPage::picWholeRun_PageSpanWanted);
    wire(run, &WholeRunPanel::DrawsSpanChanged, "graOverview",
         &GraphPage::picWholeRun_DrawsSpanChanged);
    connect(run, &WholeRunPanel::RecordWanted, this, &GraphPage::RecordWanted);
    connect(run, &WholeRunPanel::CursorsTold, this, &GraphPage::Told);
}

void GraphPage::Attach(const Mreport::ViewedFile& file, Mreport::ShownGraph& shown) {
    file_ = &file;
    shown_ = &shown;
    ui_->picWholeRun->Attach(file, shown, *ui_->graSpan);
}

GraphControl& GraphPage::Graph() const {
    return *ui_->graReport;
}

WholeRunPanel& GraphPage::Run() const {
    return *ui_->picWholeRun;
}

PaperGraph& GraphPage::ShownGraph() const {
    if (ui_->picWholeRun->DrawsSpan())
        return *ui_->graSpan;
    return *ui_->graReport;
}

void GraphPage::Reset() {
    ui_->graReport->SetEmptyText({});
    ui_->graReport->SetLeftTitle("mV");
    ui_->graReport->SetNumSets(0);
    ui_->graReport->SetDataReset(Mreport::graph::resetAllData);
    ui_->graReport->SetDrawMode(Mreport::graph::draw);
}

void GraphPage::GraphDrawn(Mreport::FileRecord firstRecord) {
    firstRecord_ = firstRecord;
    ui_->graReport->SetEmptyText(Text::ToQt(Mreport::EmptyGraphText(*file_, *shown_)));
    const Mreport::PageRange range = Mreport::GraphRange(*file_, *shown_);
    const std::int32_t first = std::max(range.InPage(firstRecord).number, 1);
    const std::int32_t end = std::min(first + Mreport::spanLength - 1, range.recordsInPage);
    ui_->picWholeRun->PageSpanDrawn(shown_->graphPageIndex, {end}, end - first + 1);
}

void GraphPage::SetScroll(const Mreport::ScrollLimits& limits) {
    ui_->HScroll->setPageStep(Mreport::spanLength);
    ui_->HScroll->setRange(limits.min, limits.max);
    if (limits.value)
        ui_->HScroll->setValue(*limits.value);
}

Mreport::PageRecord GraphPage::ScrollValue() const {
    return {ui_->HScroll->value()};
}

void GraphPage::ShowScroll(bool visible) {
    ui_->HScroll->setVisible(visible);
}

void GraphPage::KeepRoom(int graphHeight_px) {
    ui_->graReport->setMinimumHeight(graphHeight_px);
    ui_->graSpan->setMinimumHeight(graphHeight_px);
}

void GraphPage::Zoom(double factor) {
    if (ui_->picWholeRun->DrawsSpan())
        ui_->picWholeRun->ZoomSpan(1 / factor);
    else
        ui_->graReport->Zoom(factor);
}

void GraphPage::ShowWholeSpan() {
    ui_->picWholeRun->BackToPageSpan();
    ui_->graReport->ResetZoom();
}

void GraphPage::BringIntoSpan(Mreport::FileRecord record) {
    if (shown_->autoUpdate)
        return;
    const int place = Mreport::GraphRange(*file_, *shown_).InPage(record).number;
    const int end = ui_->HScroll->value();
    if (place <= end - Mreport::spanLength || place > end)
        ui_->HScroll->setValue(place + Mreport::spanLength / 2);
}

void GraphPage::HScroll_Change(int value) {
    if (shown_->scrollGuard)
        return;
    ui_->picWholeRun->BackToPageSpan();
    Q_EMIT SpanWanted({value});
}

void GraphPage::HScroll_Scroll(int value) {
    Q_EMIT ThumbMoved(Mreport::GraphRange(*file_, *shown_).InFile({value}));
}

int GraphPage::SeriesNumber(int set) const {
    const auto series = Mreport::Series(*file_, *shown_);
    if (set < 1 || set > std::ssize(series))
        return 0;
    return *(series.begin() + set - 1);
}

std::int64_t GraphPage::RecordOf(int point) const {
    return std::int64_t{firstRecord_.number} + point - 1;
}

void GraphPage::graReport_Click(int set, int point) {
    const int number = SeriesNumber(set);
    if (number == 0)
        return;
    const double value = ui_->graReport->DataGetAmp(set, point);
    Q_EMIT PointClicked(Mreport::PointText(shown_->unitCode, number, RecordOf(point), value));
}

void GraphPage::graReport_MouseMove(int set, int point) {
    const int number = SeriesNumber(set);
    if (number == 0)
        return Q_EMIT Told({});
    const double value = ui_->graReport->DataGetAmp(set, point);
    Q_EMIT Told(Text::ToQt(Mreport::PointInfo(shown_->unitCode, number, RecordOf(point), value)));
}

/// As the selection dialog's acceptance, with the channels that can have the quantity.
void GraphPage::picWholeRun_QuantityChosen(Quantity quantity) {
    Mreport::Selection selection(*file_, *shown_);
    selection.ChooseUnit(quantity);
    selection.Accept(*shown_);
    ui_->graReport->SetNumSets(selection.CheckedCount());
    ui_->graReport->SetLeftTitle(selection.UnitName());
    Q_EMIT SpanWanted(ScrollValue());
    ui_->picWholeRun->FileReady();
}

void GraphPage::picWholeRun_PageSpanWanted(int page, Mreport::PageRecord end) {
    if (!shown_->autoUpdate) { // the live graph stays with the newest records
        if (page != shown_->graphPageIndex)
            Q_EMIT PageWanted(page);
        ui_->HScroll->setValue(end.number);
    }
    ui_->picWholeRun->BackToPageSpan();
}

void GraphPage::picWholeRun_DrawsSpanChanged() {
    const bool span = ui_->picWholeRun->DrawsSpan();
    ui_->graReport->setVisible(!span);
    ui_->graSpan->setVisible(span);
}
