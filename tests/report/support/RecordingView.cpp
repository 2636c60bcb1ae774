#include "report/support/RecordingView.h"

#include <gtest/gtest.h>

#include <algorithm>

void RecordingGraph::SetDataReset(int what) {
    EXPECT_EQ(what, 9);
    ++resets;
    for (auto& [number, set] : sets) {
        set.data.clear();
        set.extra.clear();
    }
    labels.clear();
    minorTicks.clear();
}

void RecordingGraph::SetDrawMode(int mode) {
    EXPECT_EQ(mode, 3);
    ++draws;
}

int RecordingGraph::Values(int set) const {
    const auto found = sets.find(set);
    if (found == sets.end())
        return 0;
    return static_cast<int>(std::count_if(found->second.extra.begin(), found->second.extra.end(),
                                          [](const auto& mark) { return mark.second == 0; }));
}

void RecordingView::ResetPages() {
    ++resets;
    tabs = {"List &1"};
    selectedTab = 0;
    graph.SetLeftTitle("mV");
}

void RecordingView::PageAdded(int page) {
    EXPECT_EQ(page, static_cast<int>(tabs.size()));
    tabs.push_back("List &" + std::to_string(page + 1));
}

void RecordingView::FileRead() {
    statusAtFileRead = statuses.empty() ? "" : statuses.back();
    recordsAtFileRead = file_.pages.RecordCount(0);
}

void RecordingView::SetScroll(const Mreport::ScrollLimits& limits) {
    scrollGuarded = scrollGuarded && shown_.scrollGuard;
    scroll = limits;
    scrollValue = std::clamp(limits.value.value_or(scrollValue), limits.min, limits.max);
}

void RecordingView::GraphDrawn(Mreport::FileRecord first) {
    firstRecord = first.number;
    const auto range = file_.pages.Records(0);
    recordsAtDrawing.push_back(range ? range->last : 0);
}
