#include "window/OutputWindow.h"

#include "panels/Colours.h"
#include "rig/SlotOwner.h"
#include "support/TestRig.h"
#include "window/UniverseGrid.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QTest>
#include <QToolTip>

#include <memory>

namespace {

constexpr QRgb dark = 0xFF4D4D4D;
constexpr QRgb lit = 0xFF808080;

/// What was painted of a widget that this filters the events of.
class PaintedPart : public QObject {
public:
    const QRegion& part() const { return part_; }
    /// Forgets what was painted; true when nothing is added to it in a while.
    bool isStill() {
        constexpr int milliseconds = 50;
        part_ = {};
        QTest::qWait(milliseconds);
        return part_.isEmpty();
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            part_ |= static_cast<const QPaintEvent*>(event)->region();
        }
        return false;
    }

private:
    QRegion part_;
};

} // namespace

/// Spot in universe 1 and Wash in universe 0, and the window of their slots.
class tst_OutputWindow : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyPatchedUniverseHasAGridInTheirOrder();
    void theGridsFollowThePatch();
    void aSlotIsABarAsHighAsItsLevel_data();
    void aSlotIsABarAsHighAsItsLevel();
    void aNewLevelIsShownWithoutBeingAskedFor();
    void whatHasNotChangedIsNotDrawnAgain();
    void aClosedWindowDoesNotLook();
    void pointingAtASlotNamesWhatDrivesIt_data();
    void pointingAtASlotNamesWhatDrivesIt();
    void aClickChoosesTheFader();
    void aClickOnAFreeSlotChoosesNothing();
    void keysGoFromSlotToSlot_data();
    void keysGoFromSlotToSlot();
    void theSlotOfTheKeysIsOutlined();
    void theSlotOfTheKeysIsScrolledTo();
    void returnChoosesTheFader();
    void tabGoesToTheNextUniverse();
    void escapeClosesTheWindow();

private:
    UniverseGrid& grid(std::size_t index) const { return *window_->grids().at(index); }
    /// Sends a level on a slot, by the fader that drives it or one of its own.
    void setSlot(int universe, std::size_t slot, std::uint8_t level);
    static void click(UniverseGrid& grid, std::size_t slot);

    std::unique_ptr<QWidget> main_;
    std::unique_ptr<TestRig> rig_;
    Fixture* spot_ = nullptr;
    OutputWindow* window_ = nullptr;
    QStringList chosen_; ///< fixtures and faders
};

void tst_OutputWindow::init() {
    main_ = std::make_unique<QWidget>();
    rig_ = std::make_unique<TestRig>();
    spot_ = &rig_->add("Spot", {"Dimmer", "Red"}, 1, 33);
    rig_->add("Wash", {"Green"}, 0, 1);
    window_ = new OutputWindow(*main_, rig_->engine(), rig_->fixtures()); // owned by the main window
    chosen_.clear();
    connect(window_, &OutputWindow::controlChosen, this,
            [this](const Fixture& fixture, const DMXControl& control) {
                chosen_.append(fixture.name() + ": " + control.key());
            });
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_));
}

void tst_OutputWindow::cleanup() {
    main_.reset();
    rig_.reset();
}

void tst_OutputWindow::setSlot(int universe, std::size_t slot, std::uint8_t level) {
    if (!ownerOfSlot(rig_->fixtures(), universe, slot - 1).control) {
        rig_->add("Lamp", {"Level"}, universe, static_cast<int>(slot));
    }
    ownerOfSlot(rig_->fixtures(), universe, slot - 1).control->setValue(level);
    rig_->tick();
}

void tst_OutputWindow::click(UniverseGrid& grid, std::size_t slot) {
    QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.slotRect(slot - 1).center());
}

void tst_OutputWindow::everyPatchedUniverseHasAGridInTheirOrder() {
    QCOMPARE(window_->grids().size(), std::size_t{2});
    QCOMPARE(grid(0).universe(), 0);
    QCOMPARE(grid(1).universe(), 1);
    QStringList labels;
    for (const QLabel* const label : window_->findChildren<QLabel*>()) {
        labels.append(label->text());
    }
    QCOMPARE(labels, (QStringList{"Universe 0", "Universe 1"}));
}

void tst_OutputWindow::theGridsFollowThePatch() {
    spot_->setUniverse(7);
    window_->refresh();
    QCOMPARE(window_->grids().size(), std::size_t{2});
    QCOMPARE(grid(1).universe(), 7);
    rig_->fixtures().remove(0, rig_->fixtures().count());
    window_->refresh();
    QVERIFY(window_->grids().empty());
    QVERIFY(window_->findChildren<UniverseGrid*>().isEmpty());
}

void tst_OutputWindow::aSlotIsABarAsHighAsItsLevel_data() {
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("litBelow");
    QTest::addColumn<bool>("litAbove");

    QTest::newRow("nothing") << 0 << false << false;
    QTest::newRow("half") << 128 << true << false;
    QTest::newRow("full") << 255 << true << true;
}

void tst_OutputWindow::aSlotIsABarAsHighAsItsLevel() {
    QFETCH(const int, level);
    QFETCH(const bool, litBelow);
    QFETCH(const bool, litAbove);
    setSlot(0, 512, static_cast<std::uint8_t>(level));
    window_->refresh();
    const QImage image = grid(0).grab().toImage();
    const QRect slot = grid(0).slotRect(511);
    QCOMPARE(image.pixel(slot.left() + 1, slot.bottom() - 2), litBelow ? lit : dark);
    QCOMPARE(image.pixel(slot.left() + 1, slot.top() + 1), litAbove ? lit : dark);
}

void tst_OutputWindow::aNewLevelIsShownWithoutBeingAskedFor() {
    setSlot(1, 33, 77);
    QTRY_COMPARE(grid(1).slotText(32), QString("Universe 1, slot 33: 77\nSpot Dimmer"));
}

void tst_OutputWindow::whatHasNotChangedIsNotDrawnAgain() {
    PaintedPart changed;
    PaintedPart unchanged;
    grid(0).installEventFilter(&changed);
    grid(1).installEventFilter(&unchanged);
    QTRY_VERIFY(changed.isStill() && unchanged.isStill()); // the window has been drawn after its opening
    setSlot(0, 5, 9);
    QTRY_COMPARE(changed.part(), QRegion(grid(0).slotRect(4)));
    QVERIFY(unchanged.part().isEmpty());
}

void tst_OutputWindow::aClosedWindowDoesNotLook() {
    window_->close();
    setSlot(0, 1, 9);
    QTest::qWait(200); // several looks
    QCOMPARE(grid(0).slotText(0), QString("Universe 0, slot 1: 0\nWash Green"));
    window_->show();
    QCOMPARE(grid(0).slotText(0), QString("Universe 0, slot 1: 9\nWash Green"));
}

void tst_OutputWindow::pointingAtASlotNamesWhatDrivesIt_data() {
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("text");

    QTest::newRow("a fader") << 34 << "Universe 1, slot 34: 0\nSpot Red";
    QTest::newRow("a free slot") << 35 << "Universe 1, slot 35: 0";
    QTest::newRow("the last slot") << 512 << "Universe 1, slot 512: 0";
}

void tst_OutputWindow::pointingAtASlotNamesWhatDrivesIt() {
    QFETCH(const int, slot);
    QFETCH(const QString, text);
    const QPoint place = grid(1).slotRect(static_cast<std::size_t>(slot - 1)).center();
    QHelpEvent pointing(QEvent::ToolTip, place, grid(1).mapToGlobal(place));
    QCoreApplication::sendEvent(&grid(1), &pointing);
    QCOMPARE(QToolTip::text(), text);
}

void tst_OutputWindow::aClickChoosesTheFader() {
    click(grid(1), 34);
    QCOMPARE(chosen_, QStringList{"Spot: Spot.Red"});
}

void tst_OutputWindow::aClickOnAFreeSlotChoosesNothing() {
    click(grid(1), 1);
    QCOMPARE(chosen_, QStringList());
}

void tst_OutputWindow::keysGoFromSlotToSlot_data() {
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QString>("text");

    QTest::newRow("right") << QList<int>{Qt::Key_Right} << "Universe 0, slot 2: 0";
    QTest::newRow("down") << QList<int>{Qt::Key_Down} << "Universe 0, slot 33: 0";
    QTest::newRow("down, left") << QList<int>{Qt::Key_Down, Qt::Key_Left} << "Universe 0, slot 32: 0";
    QTest::newRow("down, up") << QList<int>{Qt::Key_Down, Qt::Key_Up} << "Universe 0, slot 1: 0\nWash Green";
    QTest::newRow("left at the first") << QList<int>{Qt::Key_Left} << "Universe 0, slot 1: 0\nWash Green";
    QTest::newRow("up at the top") << QList<int>{Qt::Key_Up} << "Universe 0, slot 1: 0\nWash Green";
    QTest::newRow("end") << QList<int>{Qt::Key_End} << "Universe 0, slot 512: 0";
    QTest::newRow("right at the last") << QList<int>{Qt::Key_End, Qt::Key_Right} << "Universe 0, slot 512: 0";
    QTest::newRow("down at the bottom") << QList<int>{Qt::Key_End, Qt::Key_Down} << "Universe 0, slot 512: 0";
    QTest::newRow("home") << QList<int>{Qt::Key_End, Qt::Key_Home} << "Universe 0, slot 1: 0\nWash Green";
}

void tst_OutputWindow::keysGoFromSlotToSlot() {
    QFETCH(const QList<int>, keys);
    QFETCH(const QString, text);
    for (const int key : keys) {
        QTest::keyClick(&grid(0), static_cast<Qt::Key>(key));
    }
    QCOMPARE(QToolTip::text(), text);
    QCOMPARE(grid(0).accessibleDescription(), text);
}

void tst_OutputWindow::theSlotOfTheKeysIsOutlined() {
    const auto outlined = [this](std::size_t slotIndex) {
        const QRect slot = grid(1).slotRect(slotIndex);
        return grid(1).grab().toImage().pixel(slot.topLeft()) == gHighlight.rgb();
    };
    grid(1).setFocus();
    QVERIFY(outlined(0));
    QTest::keyClick(&grid(1), Qt::Key_Right);
    QVERIFY(!outlined(0));
    QVERIFY(outlined(1));
    grid(0).setFocus();
    QVERIFY(!outlined(1));
}

void tst_OutputWindow::theSlotOfTheKeysIsScrolledTo() {
    window_->resize(970, 200);
    grid(1).setFocus();
    QTest::keyClick(&grid(1), Qt::Key_End);
    QVERIFY(grid(1).visibleRegion().contains(grid(1).slotRect(511)));
}

void tst_OutputWindow::returnChoosesTheFader() {
    QTest::keyClick(&grid(1), Qt::Key_Down);
    QTest::keyClick(&grid(1), Qt::Key_Right);
    QTest::keyClick(&grid(1), Qt::Key_Return);
    QCOMPARE(chosen_, QStringList{"Spot: Spot.Red"});
}

void tst_OutputWindow::tabGoesToTheNextUniverse() {
    grid(0).setFocus();
    QTest::keyClick(&grid(0), Qt::Key_Tab);
    QVERIFY(grid(1).hasFocus());
}

void tst_OutputWindow::escapeClosesTheWindow() {
    QTest::keyClick(window_, Qt::Key_Escape);
    QVERIFY(!window_->isVisible());
}

QTEST_MAIN(tst_OutputWindow)
#include "tst_OutputWindow.moc"
