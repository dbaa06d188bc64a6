#pragma once

#include <QTableView>

/// The fixture table. Tab walks its cells and leaves it behind the last one, Shift+Tab before the first.
class FixtureTableView : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

protected:
    bool focusNextPrevChild(bool next) override;

private:
    bool isAtEnd(bool last) const;
};
