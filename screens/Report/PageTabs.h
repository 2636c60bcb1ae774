#pragma once

#include <QTabBar>

#include <vector>

/// The tabs of the list pages. A file may have a thousand of them, and the tab bar asks for the
/// sizes of all whenever one is added: each is measured once. Tabs come at the end and keep their
/// captions.
class PageTabs : public QTabBar {
    Q_OBJECT

public:
    using QTabBar::QTabBar;

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void tabRemoved(int index) override;
    void changeEvent(QEvent* event) override;

private:
    void Forget() const;

    mutable std::vector<QSize> hints_;
    mutable std::vector<QSize> minimumHints_;
};
