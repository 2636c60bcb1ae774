#pragma once

#include "report/support/MeasurementText.h"
#include "screens/Report/Report.h"
#include "screens/controls/GraphControl.h"
#include "screens/controls/LineListView.h"
#include "screens/support/ScreenTest.h"

#include <QLabel>
#include <QScrollBar>
#include <QTabBar>

#include <fstream>
#include <functional>

/// The viewer on files of the test's own folder.
class ReportScreen : public ScreenTest {
protected:
    ReportScreen() {
        platform.clock.step = std::chrono::milliseconds(1); // events run wherever they may
        form = std::make_unique<Report>(run);
        Show(*form);
    }

    FileOpr::MeasuringRun run;
    std::unique_ptr<Report> form;

    std::filesystem::path File(const std::string& name = "run.4ch") const {
        return platform.folder.Path() / name;
    }
    void View(const std::string& text, const std::string& name = "run.4ch") {
        WriteBytes(File(name), text);
        form->ViewFile(File(name));
        Settle();
    }
    void Append(const std::string& text) const {
        std::ofstream stream(File(), std::ios::binary | std::ios::app);
        stream << text;
        ASSERT_TRUE(stream.flush());
    }

    /// Runs once, in the middle of the next load.
    void DuringLoad(const std::function<void()>& step) {
        platform.desktop.onEvents = [step, passes = 0]() mutable {
            if (++passes == 20)
                step();
        };
    }

    /// An entry of the viewer's menus, and the user's choice of it.
    QAction& Item(ReportMenus::FileItem item) const { return MenuItem("mnuFileItem", item); }
    QAction& Item(ReportMenus::ViewItem item) const { return MenuItem("mnuViewItem", item); }
    QAction& Item(ReportMenus::ToolItem item) const { return MenuItem("mnuToolItem", item); }
    QAction& Item(ReportMenus::UpdateItem item) const { return MenuItem("mnuUpdateItem", item); }
    using ScreenTest::Choose;
    template <class Entry>
    void Choose(Entry item) const {
        Choose(*form, Item(item).objectName());
    }

    const Mreport::ViewedFile& Viewed() const { return form->File(); }
    const Mreport::ShownGraph& Shown() const { return form->Shown(); }
    Mreport::PageRange Range() const { return Mreport::GraphRange(Viewed(), Shown()); }

    QString Status() const { return Find<QLabel>(*form, "lblStatus").text(); }
    GraphControl& Graph() const { return Find<GraphControl>(*form, "graReport"); }
    QScrollBar& Scroll() const { return Find<QScrollBar>(*form, "HScroll"); }
    LineListView& List(std::size_t page) const {
        return Element<LineListView>(*form, "lstData", page);
    }

private:
    QAction& MenuItem(const char* name, std::size_t index) const {
        return Element<QAction>(*form, name, index);
    }
};
