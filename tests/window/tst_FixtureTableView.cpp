#include "window/FixtureTableView.h"

#include <QApplication>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

/// A table of two rows and two columns between two text fields.
class tst_FixtureTableView : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tabWalksTheCellsAndLeavesBehindTheLast();
    void shiftTabWalksBackAndLeavesBeforeTheFirst();
    void anEmptyTableHoldsNobodyUp();

private:
    void tab(bool forward);

    QStandardItemModel cells_{2, 2};
    std::unique_ptr<QWidget> window_;
    QLineEdit* before_ = nullptr;
    FixtureTableView* table_ = nullptr;
    QLineEdit* behind_ = nullptr;
};

void tst_FixtureTableView::init() {
    cells_.setRowCount(2);
    window_ = std::make_unique<QWidget>();
    before_ = new QLineEdit;
    table_ = new FixtureTableView;
    behind_ = new QLineEdit;
    auto* const rows = new QVBoxLayout(window_.get());
    for (QWidget* const widget :
         {static_cast<QWidget*>(before_), static_cast<QWidget*>(table_), static_cast<QWidget*>(behind_)}) {
        rows->addWidget(widget);
    }
    table_->setModel(&cells_);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_FixtureTableView::cleanup() {
    window_.reset();
}

void tst_FixtureTableView::tab(bool forward) {
    QTest::keyClick(QApplication::focusWidget(), forward ? Qt::Key_Tab : Qt::Key_Backtab,
                    forward ? Qt::NoModifier : Qt::ShiftModifier);
}

void tst_FixtureTableView::tabWalksTheCellsAndLeavesBehindTheLast() {
    table_->setFocus();
    table_->setCurrentIndex(cells_.index(0, 0));
    for (const QModelIndex& cell : {cells_.index(0, 1), cells_.index(1, 0), cells_.index(1, 1)}) {
        tab(true);
        QCOMPARE(table_->currentIndex(), cell);
        QVERIFY(table_->hasFocus());
    }
    tab(true);
    QVERIFY(behind_->hasFocus());
}

void tst_FixtureTableView::shiftTabWalksBackAndLeavesBeforeTheFirst() {
    table_->setFocus();
    table_->setCurrentIndex(cells_.index(0, 1));
    tab(false);
    QCOMPARE(table_->currentIndex(), cells_.index(0, 0));
    QVERIFY(table_->hasFocus());
    tab(false);
    QVERIFY(before_->hasFocus());
}

void tst_FixtureTableView::anEmptyTableHoldsNobodyUp() {
    cells_.setRowCount(0);
    before_->setFocus();
    tab(true);
    tab(true);
    QVERIFY(behind_->hasFocus());
}

QTEST_MAIN(tst_FixtureTableView)
#include "tst_FixtureTableView.moc"
