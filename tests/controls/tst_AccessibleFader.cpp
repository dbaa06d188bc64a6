#include "controls/AccessibleFader.h"

#include "TestView.h"

#include <QApplication>
#include <QTest>

#include <limits>
#include <memory>

class tst_AccessibleFader : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aControlIsASlider();
    void itsNameIsTheFixturesAndItsOwn();
    void aPointInANameStays();
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
    void aControlWhoseViewIsGoneHasItsOwnNameOnly();

private:
    QAccessibleInterface& seen(DMXControl& control) {
        return *QAccessible::queryAccessibleInterface(&control);
    }

    std::unique_ptr<TestView> view_;
};

void tst_AccessibleFader::initTestCase() {
    AccessibleFader::install();
}

void tst_AccessibleFader::init() {
    view_ = std::make_unique<TestView>("Spot");
}

void tst_AccessibleFader::cleanup() {
    view_.reset();
    DMXControl::reset();
}

void tst_AccessibleFader::aControlIsASlider() {
    QCOMPARE(seen(view_->addFader("Level")).role(), QAccessible::Slider);
}

void tst_AccessibleFader::itsNameIsTheFixturesAndItsOwn() {
    QCOMPARE(seen(view_->addFader("Level")).text(QAccessible::Name), QString("Spot Level"));
}

void tst_AccessibleFader::aPointInANameStays() {
    view_ = std::make_unique<TestView>("Par 5.1");
    QCOMPARE(seen(view_->addFader("Gobo 1.5")).text(QAccessible::Name), QString("Par 5.1 Gobo 1.5"));
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
    view_->setUniverse(3);
    DMXControl& control = view_->add({{"name", "Pan"}, {"channels", channels}});
    control.setAddress(16);
    QCOMPARE(seen(control).text(QAccessible::Description), told);
}

void tst_AccessibleFader::itTellsItsLevel() {
    DMXControl& control = view_->addFader("Level");
    control.setValue(77);
    QCOMPARE(seen(control).valueInterface()->currentValue().toInt(), 77);
    QCOMPARE(seen(control).text(QAccessible::Value), QString("77"));
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
    QAccessibleValueInterface& value =
        *seen(view_->add({{"name", "Pan"}, {"channels", channels}})).valueInterface();
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
    DMXControl& control = view_->addFader("Level");
    control.setValue(9);
    seen(control).valueInterface()->setCurrentValue(wanted);
    QCOMPARE(control.value(), level);
}

void tst_AccessibleFader::whatIsNoNumberChangesNothing() {
    DMXControl& control = view_->addFader("Level");
    control.setValue(9);
    seen(control).valueInterface()->setCurrentValue(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(control.value(), 9U);
}

void tst_AccessibleFader::itIsSteppedWithinItsRange() {
    DMXControl& control = view_->addFader("Level");
    control.setValue(254);
    QAccessibleActionInterface& actions = *seen(control).actionInterface();
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
    DMXControl& control = view_->addFader("Level");
    control.setTime(2.5F);
    seen(control).valueInterface()->setCurrentValue(100);
    QCOMPARE(control.value(), 100U);
    QCOMPARE(control.time(), 2.5F);
}

void tst_AccessibleFader::itTakesTheKeysAndBringsItsWindowToTheFront() {
    DMXControl& control = view_->addFader("Level");
    view_->show();
    TestView other("Other");
    QVERIFY(other.bringToFront());
    seen(control).actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(&control));
    QCOMPARE(view_->selectedControl(), &control);
}

void tst_AccessibleFader::aLabelIsTextThatCannotBeSet() {
    DMXControl& label = view_->add({{"label", "Position"}});
    QCOMPARE(seen(label).role(), QAccessible::StaticText);
    QCOMPARE(seen(label).text(QAccessible::Name), QString("Position"));
    QCOMPARE(seen(label).text(QAccessible::Description), QString());
    QVERIFY(!seen(label).valueInterface());
    QVERIFY(
        !seen(label).actionInterface()->actionNames().contains(QAccessibleActionInterface::increaseAction()));
    seen(label).actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    QCOMPARE(label.value(), 0U);
}

void tst_AccessibleFader::aControlWhoseViewIsGoneHasItsOwnNameOnly() {
    view_->addFader("Level");
    const std::shared_ptr<DMXControl> control = DMXControl::controlsByName().at("Spot.Level");
    view_.reset();
    QCOMPARE(seen(*control).text(QAccessible::Name), QString("Level"));
    QCOMPARE(seen(*control).text(QAccessible::Description), QString());
}

QTEST_MAIN(tst_AccessibleFader)
#include "tst_AccessibleFader.moc"
