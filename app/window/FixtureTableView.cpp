#include "window/FixtureTableView.h"

// With its own tab navigation the toolkit's table goes round its cells and never lets the keys out.
bool FixtureTableView::focusNextPrevChild(bool next) {
    const bool leaves = isAtEnd(next);
    setTabKeyNavigation(!leaves);
    const bool moved = QTableView::focusNextPrevChild(next);
    setTabKeyNavigation(true);
    return moved;
}

bool FixtureTableView::isAtEnd(bool last) const {
    if (state() == EditingState) {
        return false;
    }
    if (!model() || model()->rowCount() == 0) {
        return true;
    }
    const QModelIndex end =
        last ? model()->index(model()->rowCount() - 1, model()->columnCount() - 1) : model()->index(0, 0);
    return currentIndex() == end;
}
