#pragma once

#include "report/ReportView.h"

#include <filesystem>
#include <string>

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
    std::int32_t ScrollValue() const override { return scrollValue_; }
    Mreport::ReportGraph& Graph() override { return graph; }
    void GraphDrawn(std::int32_t) override {}

    GraphKind graph;

private:
    std::int32_t scrollValue_;
};
