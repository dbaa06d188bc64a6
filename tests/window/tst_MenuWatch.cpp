#include "window/MenuWatch.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

/// A window in front with a menu bar, a text field and a combo box.
class tst_MenuWatch : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingIsToldWithoutAMenu();
    void aMenuIsOpenUntilItIsClosed();
    void choosingAnItemClosesTheMenu();
    void aSubmenuBelongsToItsMenu();
    void theMenuBarLeadsFromMenuToMenu();
    void theContextMenuOfATextFieldIsAMenu();
    void thePopupOfAComboBoxIsNone();
    void aTipBesideAnOpenMenuEndsNothing();
    void aMenuThatIsDeletedWhileItIsOpenIsClosed();
    void aMenuThatGoesWithItsWindowIsClosed();
    void afterItsEndNothingIsTold();

private:
    /// What was told last, and whether it was told at all.
    bool isOpen() const { return told_ > 0 && open_; }
    QMenu& menu() { return *menu_; }

    std::unique_ptr<MenuWatch> watch_;
    std::unique_ptr<QWidget> window_;
    QMenuBar* bar_ = nullptr;
    QMenu* menu_ = nullptr;
    QMenu* submenu_ = nullptr;
    QMenu* otherMenu_ = nullptr;
    QLineEdit* field_ = nullptr;
    QComboBox* box_ = nullptr;
    bool open_ = false;
    int told_ = 0;
};

void tst_MenuWatch::init() {
    open_ = false;
    told_ = 0;
    window_ = std::make_unique<QWidget>();
    auto* const rows = new QVBoxLayout(window_.get());
    bar_ = new QMenuBar;
    bar_->setNativeMenuBar(false);
    rows->setMenuBar(bar_);
    menu_ = bar_->addMenu("Cues");
    menu_->addAction("Next Cue");
    submenu_ = menu_->addMenu("More");
    submenu_->addAction("Clear");
    otherMenu_ = bar_->addMenu("Window");
    otherMenu_->addAction("Output");
    field_ = new QLineEdit;
    rows->addWidget(field_);
    box_ = new QComboBox;
    box_->addItems({"Spot", "Wash"});
    rows->addWidget(box_);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    watch_ = std::make_unique<MenuWatch>([this](bool isOpen) {
        open_ = isOpen;
        ++told_;
    });
}

void tst_MenuWatch::cleanup() {
    watch_.reset();
    window_.reset();
}

void tst_MenuWatch::nothingIsToldWithoutAMenu() {
    QTest::keyClicks(field_, "10.0.0.1");
    QWidget other;
    other.show();
    other.hide();
    QCOMPARE(told_, 0);
}

void tst_MenuWatch::aMenuIsOpenUntilItIsClosed() {
    menu().popup(QPoint(50, 50));
    QVERIFY(isOpen());
    QTest::keyClick(&menu(), Qt::Key_Escape);
    QVERIFY(!isOpen());
    menu().popup(QPoint(50, 50));
    QVERIFY(isOpen());
    menu().close();
    QVERIFY(!isOpen());
}

// What the item does finds the menu closed.
void tst_MenuWatch::choosingAnItemClosesTheMenu() {
    bool wasOpen = true;
    connect(menu().actions().at(0), &QAction::triggered, this, [&] { wasOpen = isOpen(); });
    menu().popup(QPoint(50, 50));
    menu().setActiveAction(menu().actions().at(0));
    QTest::keyClick(&menu(), Qt::Key_Return);
    QVERIFY(!wasOpen);
    QVERIFY(!isOpen());
}

void tst_MenuWatch::aSubmenuBelongsToItsMenu() {
    menu().popup(QPoint(50, 50));
    menu().setActiveAction(submenu_->menuAction());
    QTest::keyClick(&menu(), Qt::Key_Right);
    QTRY_VERIFY(submenu_->isVisible());
    QVERIFY(isOpen());
    QTest::keyClick(submenu_, Qt::Key_Left);
    QTRY_VERIFY(!submenu_->isVisible());
    QVERIFY(isOpen());
    menu().close();
    QVERIFY(!isOpen());
}

void tst_MenuWatch::theMenuBarLeadsFromMenuToMenu() {
    QTest::mouseClick(bar_, Qt::LeftButton, {}, bar_->actionGeometry(menu().menuAction()).center());
    QTRY_VERIFY(menu().isVisible());
    QVERIFY(isOpen());
    QTest::keyClick(&menu(), Qt::Key_Left); // round the end
    QTRY_VERIFY(otherMenu_->isVisible());
    QVERIFY(!menu().isVisible());
    QVERIFY(isOpen());
    QTest::keyClick(otherMenu_, Qt::Key_Escape);
    QTRY_VERIFY(!otherMenu_->isVisible());
    QVERIFY(!isOpen());
}

void tst_MenuWatch::theContextMenuOfATextFieldIsAMenu() {
    QContextMenuEvent asking(QContextMenuEvent::Mouse, field_->rect().center(),
                             field_->mapToGlobal(field_->rect().center()));
    QCoreApplication::sendEvent(field_, &asking);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QVERIFY(isOpen());
    const QPointer<QWidget> contextMenu = QApplication::activePopupWidget();
    QTest::keyClick(contextMenu, Qt::Key_Escape);
    QVERIFY(!isOpen());
    QTRY_VERIFY(!contextMenu); // it deletes itself
    QVERIFY(!isOpen());
}

void tst_MenuWatch::thePopupOfAComboBoxIsNone() {
    box_->showPopup();
    QTRY_VERIFY(QApplication::activePopupWidget());
    QVERIFY(!isOpen());
    box_->hidePopup();
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QVERIFY(!isOpen());
}

void tst_MenuWatch::aTipBesideAnOpenMenuEndsNothing() {
    menu().popup(QPoint(50, 50));
    QWidget tip(nullptr, Qt::ToolTip);
    tip.show();
    QVERIFY(menu().isVisible());
    QVERIFY(isOpen());
    tip.hide();
    QVERIFY(isOpen());
    menu().close();
    QVERIFY(!isOpen());
}

void tst_MenuWatch::aMenuThatIsDeletedWhileItIsOpenIsClosed() {
    auto* const passing = new QMenu;
    passing->addAction("Copy");
    passing->popup(QPoint(50, 50));
    QVERIFY(isOpen());
    delete passing;
    QVERIFY(!isOpen());
}

void tst_MenuWatch::aMenuThatGoesWithItsWindowIsClosed() {
    menu().popup(QPoint(50, 50));
    menu().setActiveAction(submenu_->menuAction());
    QTest::keyClick(&menu(), Qt::Key_Right);
    QTRY_VERIFY(submenu_->isVisible());
    window_.reset();
    QVERIFY(!isOpen());
}

void tst_MenuWatch::afterItsEndNothingIsTold() {
    menu().popup(QPoint(50, 50));
    watch_.reset();
    const int told = told_;
    menu().close();
    QCOMPARE(told_, told);
}

QTEST_MAIN(tst_MenuWatch)
#include "tst_MenuWatch.moc"
