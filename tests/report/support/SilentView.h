#pragma once

#include "report/ReportView.h"

#include <filesystem>
#include <string>

/// A graph that draws nothing and keeps nothing.
class SilentGraph : public Mreport::ReportGraph {
public:
    std::int16_t NumSets() const override { return 0; }
    void SetNumSets(std::int16_t) override {}
    std::int16_t NumPoints() const override { return 0; }
    void SetNumPoints(std::int16_t) override {}
    void SetThisSet(std::int16_t) override {}
    void SetLegend(std::int16_t, const std::string&) override {}
    void SetStyle(std::int16_t, std::int16_t) override {}
    void SetData(std::int16_t, double) override {}
    void SetExtra(std::int16_t, std::int16_t) override {}
    void SetLabel(std::int16_t, const std::string&) override {}
    void SetXAxisMinorTicks(std::int16_t) override {}
    void SetTickEvery(std::int16_t) override {}
    std::string LeftTitle() const override { return {}; }
    void SetLeftTitle(const std::string&) override {}
    void SetGraphTitle(const std::string&) override {}
    void SetDataReset(std::int16_t) override {}
    void SetDrawMode(std::int16_t) override {}
    double DataGetAmp(std::int16_t, std::int16_t) const override { return 0; }
};

/// A viewer that shows nothing, around a graph of the given kind; its scroll bar stands still.
template <class GraphKind>
class SilentView : public Mreport::ReportView {
public:
    explicit SilentView(std::int32_t scrollValue) : scrollValue_(scrollValue) {}

    void ShowCaption(const std::filesystem::path&) override {}
    void ResetPages() override {}
    void ShowHead(const std::string&) override {}
    void ShowStatus(const std::string&) override {}
    void PageAdded(int, bool) override {}
    void LinesAdded() override {}
    void SelectShownPage() override {}
    void SetScroll(const Mreport::ScrollLimits&) override {}
    Mreport::PageRecord ScrollValue() const override { return {scrollValue_}; }
    Mreport::ReportGraph& Graph() override { return graph; }
    void GraphDrawn(Mreport::FileRecord) override {}

    GraphKind graph;

private:
    std::int32_t scrollValue_;
};
