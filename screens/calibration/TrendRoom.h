#pragma once

class QScrollArea;
class ReadingTrend;

/// Lets the trend stand below the points of a page where there is room for it: on a small screen it
/// folds away, so that nobody has to scroll to the points.
class TrendRoom {
public:
    void Take(QScrollArea& page, ReadingTrend& trend);

    /// Whether there is anything to show.
    void SetWanted(bool wanted);

    /// To be called when the room has changed.
    void Share();

private:
    QScrollArea* page_ = nullptr;
    ReadingTrend* trend_ = nullptr;
    bool wanted_ = false;
};
