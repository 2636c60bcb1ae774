#include "screens/Report/PageTabs.h"

namespace {

/// The size at this index, measured where it is not known yet.
template <class Measure>
QSize Known(std::vector<QSize>& sizes, int index, Measure measure) {
    while (static_cast<int>(sizes.size()) <= index)
        sizes.push_back(measure(static_cast<int>(sizes.size())));
    return sizes[static_cast<unsigned>(index)];
}

} // namespace

QSize PageTabs::tabSizeHint(int index) const {
    return Known(hints_, index, [this](int tab) { return QTabBar::tabSizeHint(tab); });
}

QSize PageTabs::minimumTabSizeHint(int index) const {
    return Known(minimumHints_, index,
                 [this](int tab) { return QTabBar::minimumTabSizeHint(tab); });
}

void PageTabs::tabRemoved(int index) {
    Forget();
    QTabBar::tabRemoved(index);
}

/// Another font or style.
void PageTabs::changeEvent(QEvent* event) {
    Forget();
    QTabBar::changeEvent(event);
}

void PageTabs::Forget() const {
    hints_.clear();
    minimumHints_.clear();
}
