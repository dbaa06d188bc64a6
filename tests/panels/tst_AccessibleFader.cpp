#include "panels/AccessibleView.h"

#include "TestPanel.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include <limits>
#include <memory>

namespace {

QAccessibleInterface& seen(ControlView& view) {
    return *QAccessible::queryAccessibleInterface(&view);
}

QAccessibleInterface& seen(TestPanel& panel, const DMXControl& control) {
    return *seen(panel.view()).child(static_cast<int>(control.index()));
}

} // namespace

/// A view and its faders as a screen reader finds them.
class tst_AccessibleFader : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aControlIsASlider();
    void itsNameIsTheFixturesAndItsOwn();
    void aPointInANameStays();
    void theProfilesAroundItArePartOfItsName();
    void itTellsItsSlots_data();
    void itTellsItsSlots();
    void itTellsItsLevel();
    void itsRangeIsThatOfItsChannels_data();
    void itsRangeIsThatOfItsChannels();
    void itIsSetAtOnce_data();
    void itIsSetAtOnce();
    void whatIsNoNumberChangesNothing();
    void itIsSteppedWithinItsRange();
    void itsFadeTimeIsLeftAlone();
    void itTakesTheKeysAndBringsItsWindowToTheFront();
    void aLabelIsTextThatCannotBeSet();
    void aControlWhoseViewIsGoneIsNotFoundAnyMore();

    void theFadersAreTheChildrenOfTheirView();
    void aChildKnowsItsParentAndItsPlace();
    void aChildIsFoundWhereItIsDrawn();
    void whatIsNotShownIsInvisible();
    void theFaderWithTheKeysHasTheFocus();
    void withoutASelectedFaderTheViewHasTheFocus();
    void aSelectedFaderBehindAnotherWindowHasNoFocus();
    void theNumberBeingTypedComesAfterTheFaders();
    void twoViewsHaveFadersOfTheirOwn();

private:
    /// A fader alone in its fixture.
    DMXControl& only(const QVariantMap& entry, const QString& name = "Spot", int universe = 0,
                     int address = 1) {
        panel_ = std::make_unique<TestPanel>(QVariantList{entry}, name, universe, address);
        return panel_->fader(0);
    }

    std::unique_ptr<TestPanel> panel_;
};

void tst_AccessibleFader::initTestCase() {
    AccessibleView::install();
}

void tst_AccessibleFader::init() {
    panel_ = std::make_unique<TestPanel>(QVariantList{controlEntry("Level")});
}

void tst_AccessibleFader::cleanup() {
    panel_.reset();
}

void tst_AccessibleFader::aControlIsASlider() {
    QCOMPARE(seen(*panel_, panel_->fader("Level")).role(), QAccessible::Slider);
}

void tst_AccessibleFader::itsNameIsTheFixturesAndItsOwn() {
    QCOMPARE(seen(*panel_, panel_->fader("Level")).text(QAccessible::Name), QString("Spot Level"));
}

void tst_AccessibleFader::aPointInANameStays() {
    const DMXControl& control = only(controlEntry("Gobo 1.5"), "Par 5.1");
    QCOMPARE(seen(*panel_, control).text(QAccessible::Name), QString("Par 5.1 Gobo 1.5"));
}

void tst_AccessibleFader::theProfilesAroundItArePartOfItsName() {
    panel_->rig().profiles().setTable(QVariantMap{{"RGB", QVariantList{controlEntry("Red")}}});
    TestPanel bar(*panel_, {QVariantMap{{"profile", "RGB"}, {"name", "Cell 1"}}}, "Bar");
    QCOMPARE(seen(bar, bar.fader(0)).text(QAccessible::Name), QString("Bar Cell 1 Red"));
}

void tst_AccessibleFader::itTellsItsSlots_data() {
    QTest::addColumn<int>("channels");
    QTest::addColumn<QString>("told");

    QTest::newRow("8 bit") << 1 << "Universe 3, slot 17";
    QTest::newRow("16 bit") << 2 << "Universe 3, slots 17 and 18";
}

void tst_AccessibleFader::itTellsItsSlots() {
    QFETCH(const int, channels);
    QFETCH(const QString, told);
    const DMXControl& control = only({{"name", "Pan"}, {"channels", channels}}, "Spot", 3, 17);
    QCOMPARE(seen(*panel_, control).text(QAccessible::Description), told);
}

void tst_AccessibleFader::itTellsItsLevel() {
    DMXControl& control = panel_->fader("Level");
    control.setValue(77);
    QCOMPARE(seen(*panel_, control).valueInterface()->currentValue().toInt(), 77);
    QCOMPARE(seen(*panel_, control).text(QAccessible::Value), QString("77"));
}

void tst_AccessibleFader::itsRangeIsThatOfItsChannels_data() {
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("maximum");

    QTest::newRow("8 bit") << 1 << 255;
    QTest::newRow("16 bit") << 2 << 65535;
}

void tst_AccessibleFader::itsRangeIsThatOfItsChannels() {
    QFETCH(const int, channels);
    QFETCH(const int, maximum);
    const DMXControl& control = only({{"name", "Pan"}, {"channels", channels}});
    const QAccessibleValueInterface& value = *seen(*panel_, control).valueInterface();
    QCOMPARE(value.minimumValue().toInt(), 0);
    QCOMPARE(value.maximumValue().toInt(), maximum);
    QCOMPARE(value.minimumStepSize().toInt(), 1);
}

void tst_AccessibleFader::itIsSetAtOnce_data() {
    QTest::addColumn<QVariant>("wanted");
    QTest::addColumn<quint32>("level");

    QTest::newRow("a level") << QVariant(128.0) << 128U;
    QTest::newRow("the whole range") << QVariant(255) << 255U;
    QTest::newRow("nothing") << QVariant(0) << 0U;
    QTest::newRow("between two levels") << QVariant(127.6) << 128U;
    QTest::newRow("above the range") << QVariant(1e300) << 255U;
    QTest::newRow("below the range") << QVariant(-1.0) << 0U;
    QTest::newRow("without end") << QVariant(std::numeric_limits<double>::infinity()) << 255U;
}

void tst_AccessibleFader::itIsSetAtOnce() {
    QFETCH(const QVariant, wanted);
    QFETCH(const quint32, level);
    DMXControl& control = panel_->fader("Level");
    control.setValue(9);
    seen(*panel_, control).valueInterface()->setCurrentValue(wanted);
    QCOMPARE(control.value(), level);
}

void tst_AccessibleFader::whatIsNoNumberChangesNothing() {
    DMXControl& control = panel_->fader("Level");
    control.setValue(9);
    seen(*panel_, control).valueInterface()->setCurrentValue(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(control.value(), 9U);
}

void tst_AccessibleFader::itIsSteppedWithinItsRange() {
    DMXControl& control = panel_->fader("Level");
    control.setValue(254);
    QAccessibleActionInterface& actions = *seen(*panel_, control).actionInterface();
    QVERIFY(actions.actionNames().contains(QAccessibleActionInterface::increaseAction()));
    for (const quint32 level : {255U, 255U}) {
        actions.doAction(QAccessibleActionInterface::increaseAction());
        QCOMPARE(control.value(), level);
    }
    control.setValue(1);
    for (const quint32 level : {0U, 0U}) {
        actions.doAction(QAccessibleActionInterface::decreaseAction());
        QCOMPARE(control.value(), level);
    }
}

void tst_AccessibleFader::itsFadeTimeIsLeftAlone() {
    DMXControl& control = panel_->fader("Level");
    control.setTime(2.5F);
    seen(*panel_, control).valueInterface()->setCurrentValue(100);
    QCOMPARE(control.value(), 100U);
    QCOMPARE(control.time(), 2.5F);
}

void tst_AccessibleFader::itTakesTheKeysAndBringsItsWindowToTheFront() {
    DMXControl& control = panel_->fader("Level");
    panel_->view().show();
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Other");
    QVERIFY(other.bringToFront());
    seen(*panel_, control).actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(&panel_->view()));
    QVERIFY(panel_->hasKeys(control));
    QCOMPARE(panel_->fixture().selectedControl(), &control);
}

void tst_AccessibleFader::aLabelIsTextThatCannotBeSet() {
    const DMXControl& label = only(labelEntry("Position"));
    QCOMPARE(seen(*panel_, label).role(), QAccessible::StaticText);
    QCOMPARE(seen(*panel_, label).text(QAccessible::Name), QString("Position"));
    QCOMPARE(seen(*panel_, label).text(QAccessible::Description), QString());
    QVERIFY(!seen(*panel_, label).valueInterface());
    QAccessibleActionInterface& actions = *seen(*panel_, label).actionInterface();
    QVERIFY(actions.actionNames().empty());
    QVERIFY(!seen(*panel_, label).state().focusable);
    actions.doAction(QAccessibleActionInterface::increaseAction());
    actions.doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(label.value(), 0U);
    QCOMPARE(panel_->fixture().selectedControl(), nullptr);
}

void tst_AccessibleFader::aControlWhoseViewIsGoneIsNotFoundAnyMore() {
    const QAccessible::Id view = QAccessible::uniqueId(&seen(panel_->view()));
    const QAccessible::Id fader = QAccessible::uniqueId(&seen(*panel_, panel_->fader("Level")));
    QVERIFY(QAccessible::accessibleInterface(fader));
    panel_->closeView();
    QVERIFY(!QAccessible::accessibleInterface(fader));
    QVERIFY(!QAccessible::accessibleInterface(view));
}

void tst_AccessibleFader::theFadersAreTheChildrenOfTheirView() {
    panel_ =
        std::make_unique<TestPanel>(QVariantList{labelEntry("Position"), controlEntry("Pan"),
                                                 QVariantMap{{"blank", qlonglong{2}}}, wideEntry("Tilt")});
    QAccessibleInterface& view = seen(panel_->view());
    QCOMPARE(view.childCount(), 4);
    QStringList names;
    for (int i = 0; i < view.childCount(); ++i) {
        names.append(view.child(i)->text(QAccessible::Name));
        QCOMPARE(view.child(i), view.child(i)); // the same each time
    }
    QCOMPARE(names, QStringList({"Position", "Spot Pan", "", "Spot Tilt"}));
    QVERIFY(!view.child(4));
    QVERIFY(!view.child(-1));
}

void tst_AccessibleFader::aChildKnowsItsParentAndItsPlace() {
    panel_ = std::make_unique<TestPanel>(QVariantList{controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(panel_->bringToFront());
    QAccessibleInterface& view = seen(panel_->view());
    QAccessibleInterface& tilt = seen(*panel_, panel_->fader("Tilt"));
    QCOMPARE(tilt.parent(), &view);
    QCOMPARE(view.indexOfChild(&tilt), 1);
    QCOMPARE(view.indexOfChild(&view), -1);
    QCOMPARE(tilt.window(), panel_->view().windowHandle());
    QCOMPARE(tilt.rect(), QRect(panel_->view().mapToGlobal(QPoint(0, 19)), QSize(150, 19)));
    QCOMPARE(tilt.childCount(), 0);
    QVERIFY(tilt.isValid());
}

void tst_AccessibleFader::aChildIsFoundWhereItIsDrawn() {
    panel_ = std::make_unique<TestPanel>(
        QVariantList{labelEntry("Position"), QVariantMap{{"blank", qlonglong{2}}}, controlEntry("Pan"),
                     QVariantMap{{"name", "Zoom"}, {"header", true}}});
    QVERIFY(panel_->bringToFront());
    QAccessibleInterface& view = seen(panel_->view());
    const auto found = [&](QPoint place) {
        const QPoint global = panel_->view().mapToGlobal(place);
        const QAccessibleInterface* const child = view.childAt(global.x(), global.y());
        return child ? child->text(QAccessible::Name) : QString("nothing");
    };
    QCOMPARE(found(QPoint(20, 5)), "Position");
    QCOMPARE(found(QPoint(20, 25)), "Spot Pan");
    QCOMPARE(found(QPoint(170, 5)), "Spot Zoom");
    QCOMPARE(found(QPoint(170, 25)), "nothing"); // below the lone one of its column
}

void tst_AccessibleFader::whatIsNotShownIsInvisible() {
    panel_ =
        std::make_unique<TestPanel>(QVariantList{controlEntry("Pan"), QVariantMap{{"blank", qlonglong{2}}}});
    QAccessibleInterface& view = seen(panel_->view());
    QVERIFY(view.child(0)->state().invisible);
    QVERIFY(panel_->bringToFront());
    QVERIFY(!view.child(0)->state().invisible);
    QVERIFY(view.child(1)->state().invisible);
}

void tst_AccessibleFader::theFaderWithTheKeysHasTheFocus() {
    panel_ = std::make_unique<TestPanel>(QVariantList{controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(panel_->bringToFront());
    QAccessibleInterface& view = seen(panel_->view());
    QVERIFY(view.child(1)->state().focusable);
    for (const int index : {0, 1}) {
        panel_->view().select(panel_->fader(static_cast<std::size_t>(index)));
        QCOMPARE(view.focusChild(), view.child(index));
        QVERIFY(view.child(index)->state().focused);
        QVERIFY(!view.child(1 - index)->state().focused);
        QVERIFY(!view.state().focused);
    }
}

void tst_AccessibleFader::withoutASelectedFaderTheViewHasTheFocus() {
    QVERIFY(panel_->bringToFront());
    QVERIFY(seen(panel_->view()).state().focused);
    QVERIFY(!seen(*panel_, panel_->fader("Level")).state().focused);
}

void tst_AccessibleFader::aSelectedFaderBehindAnotherWindowHasNoFocus() {
    QVERIFY(panel_->bringToFront());
    panel_->view().select(panel_->fader("Level"));
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Other");
    QVERIFY(other.bringToFront());
    QVERIFY(!seen(*panel_, panel_->fader("Level")).state().focused);
    QVERIFY(!seen(panel_->view()).state().focused);
    // It is the one that gets it when its window is in front again.
    QCOMPARE(seen(panel_->view()).focusChild(), &seen(*panel_, panel_->fader("Level")));
}

void tst_AccessibleFader::theNumberBeingTypedComesAfterTheFaders() {
    QVERIFY(panel_->bringToFront());
    panel_->view().select(panel_->fader("Level"));
    QTest::keyClick(panel_->view().windowHandle(), '7');
    QAccessibleInterface& view = seen(panel_->view());
    QCOMPARE(view.childCount(), 2);
    QCOMPARE(view.child(1)->text(QAccessible::Name), QString("7"));
    QCOMPARE(view.indexOfChild(view.child(1)), 1);
}

void tst_AccessibleFader::twoViewsHaveFadersOfTheirOwn() {
    ControlView second(panel_->fixture(), panel_->editView());
    DMXControl& control = panel_->fader("Level");
    QVERIFY(seen(second).child(0) != &seen(*panel_, control));
    QCOMPARE(seen(second).child(0)->parent(), &seen(second));
    panel_->closeView();
    control.setValue(5);
    QCOMPARE(seen(second).child(0)->valueInterface()->currentValue().toInt(), 5);
}

QTEST_MAIN(tst_AccessibleFader)
#include "tst_AccessibleFader.moc"
