#pragma once

#include "report/ReportView.h"

#include <map>
#include <string>
#include <vector>

/// A graph that keeps what is set, and how often it was drawn.
class RecordingGraph : public Mreport::ReportGraph {
public:
    struct Set {
        std::string legend;
        int style = -1;
        std::map<int, double> data;
        std::map<int, int> extra;
    };
    std::map<int, Set> sets;
    std::map<int, std::string> labels;
    std::map<int, int> minorTicks; ///< in force when the point's label was written
    int tickEvery = 0;
    std::string title;
    int draws = 0;
    int resets = 0;

    int NumSets() const override { return numSets_; }
    void SetNumSets(int count) override { numSets_ = count; }
    int NumPoints() const override { return numPoints_; }
    void SetNumPoints(int points) override { numPoints_ = points; }
    void SetThisSet(int set) override { thisSet_ = set; }
    void SetLegend(int set, const std::string& text) override { sets[set].legend = text; }
    void SetStyle(int set, int style) override { sets[set].style = style; }
    void SetData(int point, double value) override { sets[thisSet_].data[point] = value; }
    void SetExtra(int point, int mark) override { sets[thisSet_].extra[point] = mark; }
    void SetLabel(int point, const std::string& text) override {
        labels[point] = text;
        minorTicks[point] = minor_;
    }
    void SetXAxisMinorTicks(int minor) override { minor_ = minor; }
    void SetTickEvery(int points) override { tickEvery = points; }
    std::string LeftTitle() const override { return leftTitle_; }
    void SetLeftTitle(const std::string& text) override { leftTitle_ = text; }
    void SetGraphTitle(const std::string& text) override { title = text; }
    void SetDataReset(int what) override;
    void SetDrawMode(int mode) override;
    double DataGetAmp(int set, int point) const override { return sets.at(set).data.at(point); }

    /// Points of a set that carry a value.
    int Values(int set) const;

private:
    int numSets_ = 0;
    int numPoints_ = 0;
    int thisSet_ = 1;
    int minor_ = 0;
    std::string leftTitle_;
};

/// A viewer without a window.
class RecordingView : public Mreport::ReportView {
public:
    RecordingView(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown)
        : file_(file), shown_(shown) {}

    RecordingGraph graph;
    std::filesystem::path caption;
    std::string head;
    std::vector<std::string> statuses;
    std::vector<std::string> tabs;
    int selectedTab = 0;
    int resets = 0;
    Mreport::ScrollLimits scroll;
    std::int32_t scrollValue = 0;
    bool scrollGuarded = true; ///< every setting of the scroll bar so far was
    std::int32_t firstRecord = 0;
    std::vector<std::int32_t> recordsAtDrawing; ///< in the first page, at each drawing
    std::string statusAtFileRead;
    std::int64_t recordsAtFileRead = -1; ///< in the first page

    void ShowCaption(const std::filesystem::path& file) override { caption = file; }
    void ResetPages() override;
    void ShowHead(const std::string& headerLines) override { head = headerLines; }
    void ShowStatus(const std::string& text) override { statuses.push_back(text); }
    void ShowProgress(const std::string& text) override { statuses.push_back(text); }
    void PageAdded(int page) override;
    void LinesAdded() override {}
    void FileRead() override;
    void SelectShownPage() override { selectedTab = shown_.shownPageIndex; }
    void SetScroll(const Mreport::ScrollLimits& limits) override;
    Mreport::PageRecord ScrollValue() const override { return {scrollValue}; }
    Mreport::ReportGraph& Graph() override { return graph; }
    void GraphDrawn(Mreport::FileRecord first) override;

private:
    const Mreport::ViewedFile& file_;
    const Mreport::ShownGraph& shown_;
};
