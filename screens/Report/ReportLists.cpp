#include "screens/Report/ReportLists.h"

#include "platform/qt/Text.h"
#include "report/ReportPages.h"
#include "screens/controls/LineListView.h"

#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>

namespace {

constexpr const char* widestFirstColumn = "Rec. 31000";
constexpr const char* widestColumn = "+1.33E+13";

} // namespace

ReportLists::ReportLists(QTabBar& tabs, QStackedWidget& stack, const Mreport::ReportPages& pages)
    : tabs_(tabs), stack_(stack), pages_(pages) {
    tabs_.setUsesScrollButtons(true);
    tabs_.setExpanding(false);
}

void ReportLists::Reset() {
    const QSignalBlocker quiet(tabs_);
    while (tabs_.count() > 0)
        tabs_.removeTab(tabs_.count() - 1);
    for (LineListView* list : lstData_)
        delete list;
    lstData_.clear();
    AddList();
}

void ReportLists::Add() {
    const QSignalBlocker quiet(tabs_);
    AddList();
}

void ReportLists::AddList() {
    const int page = static_cast<int>(lstData_.size());
    tabs_.addTab("List &" + QString::number(page + 1));
    auto* list = new LineListView(&stack_);
    list->setObjectName("lstData_" + QString::number(page));
    list->setAccessibleName(QString("Lines of list %1").arg(page + 1));
    list->SetTabStops(widestFirstColumn, widestColumn);
    list->SetSource([this, page] { return static_cast<int>(pages_.LineCount(page)); },
                    [this, page](int line) {
                        return Text::ToQt(pages_.Shown(page, static_cast<std::size_t>(line)));
                    });
    lstData_.push_back(list);
    stack_.addWidget(list);
}

void ReportLists::Show(int page) {
    const QSignalBlocker quiet(tabs_);
    tabs_.setCurrentIndex(page);
    stack_.setCurrentIndex(page);
}

LineListView& ReportLists::InFront() const {
    return At(stack_.currentIndex());
}
