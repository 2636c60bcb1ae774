#include "screens/calibration/TrendRoom.h"

#include "screens/calibration/ReadingTrend.h"

#include <QLayout>
#include <QScrollArea>

void TrendRoom::Take(QScrollArea& page, ReadingTrend& trend) {
    page_ = &page;
    trend_ = &trend;
    Share();
}

void TrendRoom::SetWanted(bool wanted) {
    wanted_ = wanted;
    Share();
}

void TrendRoom::Share() {
    QLayout& layout = *page_->widget()->layout();
    const int withTrend_px = ReadingTrend::least_px + layout.spacing();
    const int shown_px = trend_->isHidden() ? 0 : withTrend_px;
    const int points_px = layout.minimumSize().height() - shown_px;
    trend_->setVisible(wanted_ && points_px + withTrend_px <= page_->viewport()->height());
}
