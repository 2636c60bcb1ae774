#pragma once

#include "report/ReportView.h"

#include <filesystem>
#include <string>

namespace Mreport {

/// A graph that draws nothing and keeps nothing.
class SilentGraph : public ReportGraph {
public:
    int NumSets() const override { return 0; }
    void SetNumSets(int) override {}
    int NumPoints() const override { return 0; }
    void SetNumPoints(int) override {}
    void SetThisSet(int) override {}
    void SetLegend(int, const std::string&) override {}
    void SetStyle(int, int) override {}
    void SetData(int, double) override {}
    void SetExtra(int, int) override {}
    void SetLabel(int, const std::string&) override {}
    void SetXAxisMinorTicks(int) override {}
    void SetTickEvery(int) override {}
    std::string LeftTitle() const override { return {}; }
    void SetLeftTitle(const std::string&) override {}
    void SetGraphTitle(const std::string&) override {}
    void SetDataReset(int) override {}
    void SetDrawMode(int) override {}
    double DataGetAmp(int, int) const override { return 0; }
};

/// A viewer that shows nothing, around a graph of the given kind; its scroll bar stands still.
template <class GraphKind>
class SilentView : public ReportView {
public:
    explicit SilentView(std::int32_t scrollValue) : scrollValue_(scrollValue) {}

    void ShowCaption(const std::filesystem::path&) override {}
    void ResetPages() override {}
    void ShowHead(const std::string&) override {}
    void ShowStatus(const std::string&) override {}
    void ShowProgress(const std::string&) override {}
    void PageAdded(int) override {}
    void LinesAdded() override {}
    void FileRead() override {}
    void SelectShownPage() override {}
    void SetScroll(const ScrollLimits&) override {}
    PageRecord ScrollValue() const override { return {scrollValue_}; }
    ReportGraph& Graph() override { return graph; }
    void GraphDrawn(FileRecord) override {}

    GraphKind graph;

private:
    std::int32_t scrollValue_;
};

} // namespace Mreport
