#include "window/FixtureTableView.h"

// The toolkit's table would go round its own cells and never let the keys out.
bool FixtureTableView::focusNextPrevChild(bool next) {
    return isAtEnd(next) ? QWidget::focusNextPrevChild(next) : QTableView::focusNextPrevChild(next);
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
