#include "controls/DMXControl.h"

#include "controls/TestView.h"
#include "support/PaintCount.h"
#include "support/StandardOutput.h"
#include "support/TestClock.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <array>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

using SlotArray = std::array<std::uint8_t, 512>;

} // namespace

class tst_DMXControl : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    void aNewControlStandsAtTheOriginAndIs100By10();
    void aNewControlIsAtItsDefault();
    void a16BitControlAt1000IsWrittenCoarseByteFirst();
    void threeChannelsMakeAn8BitControl();
    void aBlankIsHiddenAndDrivesNothing();
    void aLabelDrivesNothing();
    void aNewLayerIsRaisedBeforeTheNameIsResolved();
    void propertiesAreReadAndWrittenAsTheyAre();
    void settingTheValueNeitherFadesNorRedrawsNorWritesSlots();

    void controlsAreRegisteredUnderTheViewsKeyAndTheirName();
    void dummiesAreNotRegistered();
    void theNewestControlTakesAKeyAndTheMessageIsPrintedOnce();
    void namesThatResolveToTheSameTakeTheSameKey();
    void aControlWithoutANameIsRegisteredUnderTheViewsKeyAndAPoint();
    void aVeryLongNameIsAKeyLikeAnyOther();
    void resetEmptiesTheRegistryAndLeavesTheControls();
    void aRegisteredControlOutlivesItsView();

    void theTooltipShowsUniverseAndSlotFrom1_data();
    void theTooltipShowsUniverseAndSlotFrom1();
    void theTooltipIsShownWhereThePointerRests();
    void aDummyThatIsToldToFadeStandsStill();

    void aLevelWithoutATimeIsTakenAtOnceAndRedrawn();
    void aLevelWithATimeFades();
    void thePresentLevelChangesAndRedrawsNothing();
    void onlyAStepThatChangesTheLevelRedraws();
    void theDefaultIsTakenAtOnceInMidFade();
    void aControlAwayFromItsDefaultSaysSo();

    void aLevelIsSetByKeyFromNumbersAndStrings_data();
    void aLevelIsSetByKeyFromNumbersAndStrings();
    void anUnknownKeyIsPassedOver();
};

void tst_DMXControl::cleanup() {
    DMXControl::reset();
}

void tst_DMXControl::aNewControlStandsAtTheOriginAndIs100By10() {
    TestView view;
    const auto control = DMXControl::controlWithDictionary({{"name", "Pan"}}, view);
    QCOMPARE(control->geometry(), QRect(0, 0, 100, 10));
}

void tst_DMXControl::aNewControlIsAtItsDefault() {
    TestView view;
    const DMXControl& control = view.add(
        {{"name", "Pan"}, {"default", qlonglong{128}}, {"header", true}, {"channels", qlonglong{1}}});
    QCOMPARE(control.name(), "Pan");
    QCOMPARE(control.value(), 128U);
    QCOMPARE(control.max(), 255U);
    QCOMPARE(control.channels(), 1U);
    QCOMPARE(control.time(), 0.0F);
    QVERIFY(control.header());
    QVERIFY(!control.dummy());
    QVERIFY(!control.hide());
    QVERIFY(!control.notDefault());
    QVERIFY(!control.fade().running());
}

void tst_DMXControl::a16BitControlAt1000IsWrittenCoarseByteFirst() {
    TestView view;
    DMXControl& control =
        view.add({{"name", "Pan"}, {"channels", qlonglong{2}}, {"default", qlonglong{1000}}});
    QCOMPARE(control.max(), 65535U);
    QCOMPARE(control.value(), 1000U);
    control.setAddress(7);
    SlotArray levels{};
    QVERIFY(control.updateDMX(levels));
    SlotArray expected{};
    expected[7] = 0x03;
    expected[8] = 0xE8;
    QCOMPARE(levels, expected);
    QVERIFY(!control.updateDMX(levels));
}

void tst_DMXControl::threeChannelsMakeAn8BitControl() {
    TestView view;
    for (const QVariantMap& entry : {QVariantMap{{"channels", qlonglong{3}}}, QVariantMap{}}) {
        const auto control = DMXControl::controlWithDictionary(entry, view);
        QCOMPARE(control->max(), 255U);
        QCOMPARE(control->channels(), 1U);
        DMXControl::reset();
    }
}

void tst_DMXControl::aBlankIsHiddenAndDrivesNothing() {
    TestView view;
    DMXControl& blank = view.add({{"blank", qlonglong{4}}});
    QCOMPARE(blank.channels(), 4U);
    QVERIFY(blank.hide());
    QVERIFY(blank.dummy());
    SlotArray levels{};
    levels.fill(9);
    const SlotArray before = levels;
    QVERIFY(!blank.updateDMX(levels));
    QCOMPARE(levels, before);
}

void tst_DMXControl::aLabelDrivesNothing() {
    TestView view;
    DMXControl& label = view.add({{"label", "Pan"}});
    QCOMPARE(label.name(), "Pan");
    QCOMPARE(label.channels(), 0U);
    QVERIFY(label.dummy());
    SlotArray levels{};
    levels.fill(9);
    const SlotArray before = levels;
    QVERIFY(!label.updateDMX(levels));
    QCOMPARE(levels, before);
}

void tst_DMXControl::aNewLayerIsRaisedBeforeTheNameIsResolved() {
    TestView view;
    view.setLayerNum(1);
    const DMXControl& first = view.add({{"name", "Dimmer #"}});
    const DMXControl& second = view.add({{"name", "Dimmer #"}, {"newlayer", true}});
    const DMXControl& third = view.add({{"label", "Layer #"}});
    QCOMPARE(first.name(), "Dimmer 1");
    QCOMPARE(second.name(), "Dimmer 2");
    QCOMPARE(third.name(), "Layer 2");
    QCOMPARE(view.layerNum(), 2U);
}

void tst_DMXControl::propertiesAreReadAndWrittenAsTheyAre() {
    TestView view;
    DMXControl& control = view.addFader("Pan");
    control.setName("Tilt");
    control.setChannels(2);
    control.setValue(70000);
    control.setTime(-1.5F);
    control.setMax(9);
    control.setHide(true);
    control.setDummy(true);
    control.setHeader(true);
    QCOMPARE(control.name(), "Tilt");
    QCOMPARE(control.channels(), 2U);
    QCOMPARE(control.value(), 70000U);
    QCOMPARE(control.time(), -1.5F);
    QCOMPARE(control.max(), 9U);
    QVERIFY(control.hide());
    QVERIFY(control.dummy());
    QVERIFY(control.header());
    QVERIFY(DMXControl::controlsByName().contains("Spot.Pan"));
}

void tst_DMXControl::settingTheValueNeitherFadesNorRedrawsNorWritesSlots() {
    TestView view;
    DMXControl& control = view.addFader("Pan");
    QVERIFY(view.bringToFront());
    SlotArray levels{};
    PaintCount paints(control);
    paints.take();
    control.setTime(2);
    control.setValue(100);
    QVERIFY(!control.fade().running());
    QCOMPARE(paints.take(), 0);
    QCOMPARE(levels[0], 0);
    QVERIFY(control.updateDMX(levels));
    QCOMPARE(levels[0], 100);
}

void tst_DMXControl::controlsAreRegisteredUnderTheViewsKeyAndTheirName() {
    TestView view("Wash.Cell 2");
    view.setLayerNum(3);
    DMXControl& control = view.addFader("Red #");
    const auto& registry = DMXControl::controlsByName();
    QCOMPARE(registry.size(), std::size_t{1});
    QCOMPARE(registry.begin()->first, "Wash.Cell 2.Red 3");
    QCOMPARE(registry.begin()->second.get(), &control);
}

void tst_DMXControl::dummiesAreNotRegistered() {
    TestView view;
    view.add({{"blank", qlonglong{4}}, {"name", "Pan"}});
    view.add({{"label", "Pan"}});
    QVERIFY(DMXControl::controlsByName().empty());
}

void tst_DMXControl::theNewestControlTakesAKeyAndTheMessageIsPrintedOnce() {
    TestView view;
    const DMXControl* first = nullptr;
    const DMXControl* second = nullptr;
    const QByteArray output = standardOutputOf([&] {
        first = &view.addFader("Pan");
        second = &view.addFader("Pan");
    });
    QCOMPARE(output, "DMXControl 'Spot.Pan' already exists!\n");
    QCOMPARE(DMXControl::controlsByName().size(), std::size_t{1});
    QCOMPARE(DMXControl::controlsByName().at("Spot.Pan").get(), second);
    QVERIFY(first != second);
    QCOMPARE(first->name(), "Pan");
}

void tst_DMXControl::namesThatResolveToTheSameTakeTheSameKey() {
    TestView view;
    view.setLayerNum(1);
    const DMXControl* second = nullptr;
    const QByteArray output = standardOutputOf([&] {
        view.addFader("Pan #");
        second = &view.addFader("Pan 1");
    });
    QCOMPARE(output, "DMXControl 'Spot.Pan 1' already exists!\n");
    QCOMPARE(DMXControl::controlsByName().size(), std::size_t{1});
    QCOMPARE(DMXControl::controlsByName().at("Spot.Pan 1").get(), second);
}

void tst_DMXControl::aControlWithoutANameIsRegisteredUnderTheViewsKeyAndAPoint() {
    TestView view;
    view.add(QVariantMap{});
    QVERIFY(DMXControl::controlsByName().contains("Spot."));
}

void tst_DMXControl::aVeryLongNameIsAKeyLikeAnyOther() {
    TestView view;
    const QString name = QString(100'000, 'x') + "%s%n";
    view.addFader(name);
    const QByteArray output = standardOutputOf([&] { view.addFader(name); });
    QCOMPARE(output, "DMXControl 'Spot." + name.toUtf8() + "' already exists!\n");
    QVERIFY(DMXControl::controlsByName().contains("Spot." + name));
}

void tst_DMXControl::resetEmptiesTheRegistryAndLeavesTheControls() {
    TestView view;
    DMXControl& control = view.add({{"name", "Pan"}, {"default", qlonglong{12}}});
    DMXControl::reset();
    QVERIFY(DMXControl::controlsByName().empty());
    QCOMPARE(control.value(), 12U);
    SlotArray levels{};
    QVERIFY(control.updateDMX(levels));
    // The key is free again.
    QCOMPARE(standardOutputOf([&] { view.addFader("Pan"); }), "");
    DMXControl::reset();
    DMXControl::reset();
}

void tst_DMXControl::aRegisteredControlOutlivesItsView() {
    const TestClock clock(0);
    std::weak_ptr<DMXControl> control;
    {
        TestView view;
        view.addFader("Pan");
        control = view.controls().front();
    }
    QVERIFY(!control.expired());
    QCOMPARE(DMXControl::controlsByName().at("Spot.Pan"), control.lock());
    DMXControl::setControl("Spot.Pan", 100, 0);
    QCOMPARE(control.lock()->value(), 100U);
    DMXControl::reset();
    QVERIFY(control.expired());
}

void tst_DMXControl::theTooltipShowsUniverseAndSlotFrom1_data() {
    QTest::addColumn<quint32>("universe");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<QString>("tooltip");

    QTest::newRow("first slot") << 2U << 0U << "Univ: 2, Addr: 1";
    QTest::newRow("last slot") << 0U << 511U << "Univ: 0, Addr: 512";
    QTest::newRow("outside") << 255U << 600U << "Univ: 255, Addr: 601";
    QTest::newRow("universe -1") << 4294967295U << 0U << "Univ: -1, Addr: 1";
    QTest::newRow("address -7") << 1U << 4294967288U << "Univ: 1, Addr: -7";
    QTest::newRow("highest address") << 1U << 4294967295U << "Univ: 1, Addr: 0";
}

void tst_DMXControl::theTooltipShowsUniverseAndSlotFrom1() {
    QFETCH(const quint32, universe);
    QFETCH(const quint32, address);
    TestView view;
    view.setUniverse(universe);
    DMXControl& control = view.addFader("Pan");
    control.setAddress(address);
    QCOMPARE(control.address(), address);
    QTEST(control.toolTip(), "tooltip");
}

void tst_DMXControl::theTooltipIsShownWhereThePointerRests() {
    TestView view;
    view.setUniverse(2);
    DMXControl& control = view.addFader("Pan");
    control.setAddress(0);
    QVERIFY(view.bringToFront());
    QHelpEvent rests(QEvent::ToolTip, QPoint(20, 5), control.mapToGlobal(QPoint(20, 5)));
    QCoreApplication::sendEvent(&control, &rests);
    QCOMPARE(QToolTip::text(), "Univ: 2, Addr: 1");
    QToolTip::hideText();
}

void tst_DMXControl::aDummyThatIsToldToFadeStandsStill() {
    TestClock clock(0);
    TestView view;
    DMXControl& label = view.add({{"label", "Pan"}});
    SlotArray levels{};
    label.setDMXValue(200, 2);
    clock.set(Second);
    QVERIFY(!label.updateDMX(levels));
    QCOMPARE(label.value(), 0U);
    label.setDummy(false);
    label.setChannels(1);
    clock.set(5 * Second);
    QVERIFY(label.updateDMX(levels));
    QCOMPARE(levels[0], 200);
}

void tst_DMXControl::aLevelWithoutATimeIsTakenAtOnceAndRedrawn() {
    TestView view;
    DMXControl& control = view.addFader("Pan");
    QVERIFY(view.bringToFront());
    PaintCount paints(control);
    paints.take();
    control.setDMXValue(100, 0);
    QCOMPARE(control.value(), 100U);
    QCOMPARE(control.fade().slewRate, 0.0);
    QCOMPARE(paints.take(), 1);
}

void tst_DMXControl::aLevelWithATimeFades() {
    TestClock clock(Second);
    TestView view;
    DMXControl& control = view.addFader("Pan");
    SlotArray levels{};
    control.setDMXValue(200, 2);
    QCOMPARE(control.value(), 0U);
    QCOMPARE(control.time(), 2.0F);
    QCOMPARE(control.fade().slewRate, 100.0);
    clock.advance(Second / 2);
    QVERIFY(control.updateDMX(levels));
    QCOMPARE(control.value(), 50U);
    clock.advance(3 * Second / 2);
    control.updateDMX(levels);
    clock.advance(Tick);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 200U);
    QCOMPARE(levels[0], 200);
    QCOMPARE(control.fade().slewRate, 0.0);
}

void tst_DMXControl::thePresentLevelChangesAndRedrawsNothing() {
    TestView view;
    DMXControl& control = view.add({{"name", "Pan"}, {"default", qlonglong{100}}});
    QVERIFY(view.bringToFront());
    PaintCount paints(control);
    paints.take();
    control.setDMXValue(100, 3);
    QCOMPARE(control.value(), 100U);
    QVERIFY(!control.fade().running());
    QCOMPARE(paints.take(), 0);
}

void tst_DMXControl::onlyAStepThatChangesTheLevelRedraws() {
    TestClock clock(0);
    TestView view;
    DMXControl& control = view.addFader("Pan");
    QVERIFY(view.bringToFront());
    PaintCount paints(control);
    SlotArray levels{};
    control.setDMXValue(10, 10);
    paints.take();
    clock.set(Second / 2);
    control.updateDMX(levels);
    QCOMPARE(paints.take(), 0);
    clock.set(Second + 1000);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 1U);
    QCOMPARE(paints.take(), 1);
    control.updateDMX(levels);
    QCOMPARE(paints.take(), 0);
}

void tst_DMXControl::theDefaultIsTakenAtOnceInMidFade() {
    TestClock clock(0);
    TestView view;
    DMXControl& control = view.add({{"name", "Pan"}, {"default", qlonglong{30}}});
    SlotArray levels{};
    control.setDMXValue(230, 2);
    clock.set(Second);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 130U);
    control.setDefault();
    QCOMPARE(control.value(), 30U);
    QCOMPARE(control.time(), 0.0F);
    QVERIFY(!control.fade().running());
    clock.set(5 * Second);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 30U);
    QCOMPARE(levels[0], 30);
}

void tst_DMXControl::aControlAwayFromItsDefaultSaysSo() {
    TestView view;
    DMXControl& control = view.add({{"name", "Pan"}, {"default", qlonglong{30}}});
    QVERIFY(!control.notDefault());
    control.setDMXValue(31, 0);
    QVERIFY(control.notDefault());
    control.setDMXValue(30, 0);
    QVERIFY(!control.notDefault());
    control.setTime(4);
    QVERIFY(!control.notDefault());
}

void tst_DMXControl::aLevelIsSetByKeyFromNumbersAndStrings_data() {
    QTest::addColumn<QVariant>("level");
    QTest::addColumn<QVariant>("time");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");

    QTest::newRow("numbers") << QVariant(qlonglong{128}) << QVariant(2.5) << 128U << 2.5F;
    QTest::newRow("strings") << QVariant("12") << QVariant("1.5") << 12U << 1.5F;
    QTest::newRow("strings that begin with numbers") << QVariant("5abc") << QVariant("2s") << 5U << 2.0F;
    QTest::newRow("strings without numbers") << QVariant("abc") << QVariant("s") << 0U << 0.0F;
    QTest::newRow("a real level") << QVariant(7.9) << QVariant(qlonglong{0}) << 7U << 0.0F;
    QTest::newRow("nothing") << QVariant() << QVariant() << 0U << 0.0F;
    QTest::newRow("a negative level") << QVariant(qlonglong{-1}) << QVariant(0.0) << 4294967295U << 0.0F;
}

void tst_DMXControl::aLevelIsSetByKeyFromNumbersAndStrings() {
    QFETCH(const QVariant, level);
    QFETCH(const QVariant, time);
    TestClock clock(0);
    TestView view;
    DMXControl& control = view.add({{"name", "Pan"}, {"default", qlonglong{99}}});
    DMXControl::setControl("Spot.Pan", level, time);
    QTEST(control.time(), "seconds");
    SlotArray levels{};
    clock.set(60 * Second);
    control.updateDMX(levels);
    QTEST(control.value(), "target");
}

void tst_DMXControl::anUnknownKeyIsPassedOver() {
    TestView view;
    const DMXControl& control = view.addFader("Pan");
    const QByteArray output = standardOutputOf([] {
        for (const char* key : {"Spot.Tilt", "Spot", "", "spot.pan"}) {
            DMXControl::setControl(key, 100, 0);
        }
    });
    QCOMPARE(output, "");
    QCOMPARE(control.value(), 0U);
    QCOMPARE(DMXControl::controlsByName().size(), std::size_t{1});
}

QTEST_MAIN(tst_DMXControl)
#include "tst_DMXControl.moc"
