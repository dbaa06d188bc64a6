#include "rigging/Patching.h"

#include "panels/FixtureWindows.h"
#include "settings/Settings.h"
#include "support/TestRig.h"

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

/// A rig of three: Spot in universe 0 at 1, Wash in universe 1 at 20 and Bar in universe 0 at 50.
class tst_Patching : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void anAddedFixtureStandsBelowTheOthers();
    void anAddedFixtureFindsTheProfilesThatComeWithIt();
    void undoingAnAddTakesFixturesAndProfilesAway();
    void anAddDoneAgainBringsTheLevelsBack();
    void aProfileThatWasReplacedIsThereAgain();
    void aRigBeginsWithItsFirstFixture();
    void nothingToAddIsNoStep();

    void aRemovedFixtureLeavesEverything();
    void theOthersStayAsTheyAre();
    void undoingARemovalBringsEverythingBack();
    void severalAreRemovedInOneStep();
    void rowsWithoutAFixtureArePassedOver();
    void whoeverSharedItsKeysIsFoundAgain();
    void ofFixturesWithOneKeyTheLastInTheTableIsFound();
    void windowsKeepTheirPlacesByRow();
    void aWindowWithoutAPlaceTakesNobodys();
    void aFadeAndAnEntryEndWithTheirFixture();

    void aMoveIsAStep();
    void theNumberThatItHasIsNoStep();
    void aFixtureWithoutAPlacementStays();

    void everyStepIsTold();
    void aHistoryThatIsForgottenCannotBeUndone();

private:
    QVariant placed(int row, const QString& key) const {
        return settings_.views().at(row).toMap().value(key);
    }
    QStringList placedNames() const {
        QStringList names;
        for (const QVariant& placement : settings_.views()) {
            names.append(placement.toMap().value("name").toString());
        }
        return names;
    }

    Fixture& fixture(std::size_t row) const { return *rig_->fixtures().at(row); }
    FixtureWindow* windowOf(std::size_t row) const { return windows_->at(row); }
    QStringList names() const;
    QStringList keys() const;

    Settings settings_;
    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<FixtureWindows> windows_;
    std::unique_ptr<Patching> patching_;
};

void tst_Patching::init() {
    settings_ = Settings(QVariantMap{
        {"views", QVariantList{placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan")}),
                               placement("Wash", 1, 20, {controlEntry("Dimmer", 7)}),
                               placement("Bar", 0, 50, {controlEntry("Red")})}}});
    rig_ = std::make_unique<TestRig>();
    rig_->profiles().setTable(QVariantMap{{"Par", QVariantList{controlEntry("Level")}}});
    rig_->fixtures().replaceAll(settings_.views());
    windows_ = std::make_unique<FixtureWindows>(rig_->fixtures(), rig_->places());
    windows_->open();
    patching_ = std::make_unique<Patching>(settings_, rig_->profiles(), rig_->fixtures(), rig_->places());
}

void tst_Patching::cleanup() {
    patching_.reset();
    windows_.reset();
    rig_.reset();
}

QStringList tst_Patching::names() const {
    QStringList names;
    for (const auto& fixture : rig_->fixtures().rows()) {
        names.append(fixture->name());
    }
    return names;
}

QStringList tst_Patching::keys() const {
    QStringList keys;
    for (const DMXControl* const fader : rig_->faders().sorted()) {
        keys.append(fader->key());
    }
    return keys;
}

// --- Adding --------------------------------------------------------------------------------------------

void tst_Patching::anAddedFixtureStandsBelowTheOthers() {
    const QVariantMap par = placement("Par 1", 2, 100, {QVariantMap{{"profile", "Par"}}});
    patching_->addFixtures({.placements = {par}, .profiles = {}});
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar", "Par 1"}));
    QCOMPARE(settings_.views().at(3).toMap(), par);
    QVERIFY(windowOf(3)->isVisible());
    QCOMPARE(windowOf(3)->windowTitle(), QString("Par 1 Univ: 2 Addr: 100"));
    QCOMPARE(rig_->control("Par 1.Level").address(), 99U);
    QCOMPARE(patching_->history().undoText(), QString("Add Par 1"));
}

void tst_Patching::anAddedFixtureFindsTheProfilesThatComeWithIt() {
    const QVariantList head{controlEntry("Pan"), controlEntry("Tilt")};
    patching_->addFixtures({.placements = {placement("Head", 0, 1, {QVariantMap{{"profile", "Mover"}}})},
                            .profiles = {{"Mover", head}}});
    QCOMPARE(fixture(3).controls().size(), std::size_t{2});
    QCOMPARE(settings_.userProfiles(), (QVariantMap{{"Mover", head}}));
}

void tst_Patching::undoingAnAddTakesFixturesAndProfilesAway() {
    const QVariantList mover{QVariantMap{{"profile", "Mover"}}};
    patching_->addFixtures({.placements = {placement("A", 0, 1, mover), placement("B", 0, 2, mover)},
                            .profiles = {{"Mover", QVariantList{controlEntry("Pan")}}}});
    QCOMPARE(patching_->history().undoText(), QString("Add 2 Fixtures"));
    patching_->history().undo();
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar"}));
    QCOMPARE(placedNames(), (QStringList{"Spot", "Wash", "Bar"}));
    QCOMPARE(settings_.userProfiles(), QVariantMap());
    QVERIFY(rig_->profiles().profileWithName("Mover").isEmpty());
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan", "Wash.Dimmer"}));
    patching_->history().redo();
    QCOMPARE(placedNames(), (QStringList{"Spot", "Wash", "Bar", "A", "B"}));
    QCOMPARE(fixture(4).controls().size(), std::size_t{1});
}

void tst_Patching::anAddDoneAgainBringsTheLevelsBack() {
    patching_->addFixtures(
        {.placements = {placement("Par", 0, 1, {QVariantMap{{"profile", "Par"}}})}, .profiles = {}});
    rig_->control("Par.Level").setDMXValue(90, 0);
    patching_->history().undo();
    patching_->history().redo();
    QCOMPARE(rig_->control("Par.Level").value(), 90U);
}

void tst_Patching::aProfileThatWasReplacedIsThereAgain() {
    const QVariantList own{controlEntry("Own")};
    patching_->addProfiles({{"Par", own}}, "Maker Par");
    QCOMPARE(patching_->history().undoText(), QString("Import Maker Par"));
    QCOMPARE(rig_->profiles().profileWithName("Par"), own);
    QCOMPARE(settings_.userProfiles().value("Par").toList(), own);
    patching_->history().undo();
    QCOMPARE(rig_->profiles().profileWithName("Par"), QVariantList{controlEntry("Level")});
    QVERIFY(!settings_.userProfiles().contains("Par"));
}

void tst_Patching::aRigBeginsWithItsFirstFixture() {
    rig_->fixtures().remove(0, 3);
    settings_ = Settings();
    patching_->addFixtures(
        {.placements = {placement("Lamp", 0, 1, {controlEntry("Dimmer")})}, .profiles = {}});
    QCOMPARE(names(), QStringList{"Lamp"});
    QCOMPARE(placedNames(), QStringList{"Lamp"});
    patching_->history().undo();
    QCOMPARE(rig_->fixtures().count(), std::size_t{0});
    QCOMPARE(settings_.views(), QVariantList());
}

void tst_Patching::nothingToAddIsNoStep() {
    patching_->addFixtures({});
    QCOMPARE(patching_->history().count(), 0);
}

// --- Removing ------------------------------------------------------------------------------------------

void tst_Patching::aRemovedFixtureLeavesEverything() {
    const QPointer<QWidget> window = windowOf(1);
    patching_->removeFixtures({1});
    QCOMPARE(names(), (QStringList{"Spot", "Bar"}));
    QCOMPARE(placedNames(), (QStringList{"Spot", "Bar"}));
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan"}));
    QVERIFY(!window);
    QCOMPARE(patching_->history().undoText(), QString("Remove Wash"));
}

void tst_Patching::theOthersStayAsTheyAre() {
    Fixture& spot = fixture(0);
    const Fixture& bar = fixture(2);
    const FixtureWindow* const spotWindow = windowOf(0);
    const FixtureWindow* const barWindow = windowOf(2);
    rig_->control("Bar.Red").setDMXValue(255, 0);
    rig_->control("Spot.Pan").setDMXValue(200, 1e6F);
    spot.setSelectedControl(&rig_->control("Spot.Pan"));
    patching_->removeFixtures({1});
    QCOMPARE(&fixture(0), &spot);
    QCOMPARE(&fixture(1), &bar);
    QCOMPARE(rig_->control("Bar.Red").value(), 255U);
    QVERIFY(rig_->control("Spot.Pan").fade().running());
    QCOMPARE(spot.selectedControl(), &rig_->control("Spot.Pan"));
    QCOMPARE(windowOf(0), spotWindow);
    QCOMPARE(windowOf(1), barWindow);
    QVERIFY(windowOf(0)->isVisible());
    QVERIFY(windowOf(1)->isVisible());
}

void tst_Patching::undoingARemovalBringsEverythingBack() {
    const QVariantList before = settings_.views();
    DMXControl& dimmer = rig_->control("Wash.Dimmer");
    dimmer.setDMXValue(123, 0);
    dimmer.setTime(2.5F);
    dimmer.becomeFirstResponder();
    patching_->removeFixtures({1});
    patching_->history().undo();
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar"}));
    QCOMPARE(settings_.views(), before);
    QCOMPARE(rig_->control("Wash.Dimmer").value(), 123U);
    QCOMPARE(rig_->control("Wash.Dimmer").time(), 2.5F);
    QCOMPARE(fixture(1).selectedControl(), &rig_->control("Wash.Dimmer"));
    QVERIFY(windowOf(1)->isVisible());
    patching_->history().redo();
    QCOMPARE(names(), (QStringList{"Spot", "Bar"}));
    patching_->history().undo();
    QCOMPARE(rig_->control("Wash.Dimmer").value(), 123U);
}

void tst_Patching::severalAreRemovedInOneStep() {
    patching_->removeFixtures({2, 0, 2});
    QCOMPARE(names(), QStringList{"Wash"});
    QCOMPARE(placedNames(), QStringList{"Wash"});
    QCOMPARE(patching_->history().undoText(), QString("Remove 2 Fixtures"));
    patching_->history().undo();
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar"}));
    QCOMPARE(placedNames(), (QStringList{"Spot", "Wash", "Bar"}));
    patching_->removeFixtures({0, 1, 2});
    QCOMPARE(rig_->fixtures().count(), std::size_t{0});
    patching_->history().undo();
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar"}));
}

void tst_Patching::rowsWithoutAFixtureArePassedOver() {
    patching_->removeFixtures({3, 1, 99});
    QCOMPARE(names(), (QStringList{"Spot", "Bar"}));
    patching_->removeFixtures({7});
    QCOMPARE(patching_->history().count(), 1);
}

void tst_Patching::whoeverSharedItsKeysIsFoundAgain() {
    patching_->addFixtures(
        {.placements = {placement("Spot", 3, 1, {controlEntry("Dimmer")})}, .profiles = {}});
    QCOMPARE(&rig_->control("Spot.Dimmer"), fixture(3).controls().at(0).get());
    patching_->removeFixtures({3});
    QCOMPARE(&rig_->control("Spot.Dimmer"), fixture(0).controls().at(0).get());
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan", "Wash.Dimmer"}));
}

void tst_Patching::ofFixturesWithOneKeyTheLastInTheTableIsFound() {
    patching_->addFixtures(
        {.placements = {placement("Spot", 3, 1, {controlEntry("Dimmer")})}, .profiles = {}});
    patching_->removeFixtures({0});
    patching_->history().undo();
    QCOMPARE(&rig_->control("Spot.Dimmer"), fixture(3).controls().at(0).get());
    QCOMPARE(&rig_->control("Spot.Pan"), fixture(0).controls().at(1).get());
}

void tst_Patching::windowsKeepTheirPlacesByRow() {
    for (int row = 0; row < 3; ++row) {
        rig_->places().setPlace(QString("faderhall_window_%1").arg(row), QPoint(100 * row, 50));
    }
    patching_->removeFixtures({1});
    QCOMPARE(windowOf(1)->autosavename(), QString("faderhall_window_1"));
    QCOMPARE(rig_->places().place("faderhall_window_0"), QPoint(0, 50));
    QCOMPARE(rig_->places().place("faderhall_window_1"), QPoint(200, 50));
    windowOf(1)->move(333, 44);
    QTRY_COMPARE(rig_->places().place("faderhall_window_1"), QPoint(333, 44));
    patching_->history().undo();
    QCOMPARE(rig_->places().place("faderhall_window_0"), QPoint(0, 50));
    QCOMPARE(rig_->places().place("faderhall_window_1"), QPoint(100, 50));
    QCOMPARE(rig_->places().place("faderhall_window_2"), QPoint(333, 44));
    QCOMPARE(windowOf(1)->pos(), QPoint(100, 50));
    QCOMPARE(windowOf(2)->autosavename(), QString("faderhall_window_2"));
}

void tst_Patching::aWindowWithoutAPlaceTakesNobodys() {
    rig_->places() = TestPlaces();
    rig_->places().setPlace("faderhall_window_1", QPoint(100, 50));
    patching_->removeFixtures({1});
    QVERIFY(!rig_->places().place("faderhall_window_1"));
}

void tst_Patching::aFadeAndAnEntryEndWithTheirFixture() {
    DMXControl& dimmer = rig_->control("Wash.Dimmer");
    dimmer.setDMXValue(200, 1e6F);
    ControlView& view = windowOf(1)->view();
    QTest::mousePress(&view, Qt::LeftButton, {}, fixture(1).frameOf(dimmer).center());
    QTest::keyClicks(&view, "4");
    QVERIFY(view.findChild<QLabel*>("gEditView")->isVisible());
    patching_->removeFixtures({1});
    QCoreApplication::processEvents();
    patching_->history().undo();
    QCOMPARE(rig_->control("Wash.Dimmer").value(), 7U);
    QVERIFY(!rig_->control("Wash.Dimmer").fade().running());
    QVERIFY(rig_->control("Wash.Dimmer").entry().empty());
    for (std::size_t row = 0; row < 3; ++row) {
        QVERIFY(windowOf(row)->findChildren<QLabel*>("gEditView").isEmpty());
    }
    QTest::mouseMove(&windowOf(1)->view(), QPoint(100, 10));
    QTest::mouseRelease(&windowOf(1)->view(), Qt::LeftButton);
    QCOMPARE(rig_->control("Wash.Dimmer").value(), 7U);
}

// --- Moving --------------------------------------------------------------------------------------------

void tst_Patching::aMoveIsAStep() {
    QVERIFY(patching_->moveFixture(1, PlacementNumber::Address, 30));
    QVERIFY(patching_->moveFixture(1, PlacementNumber::Universe, 5));
    QCOMPARE(windowOf(1)->windowTitle(), QString("Wash Univ: 5 Addr: 30"));
    QCOMPARE(patching_->history().undoText(), QString("Move Wash"));
    patching_->history().undo();
    QCOMPARE(fixture(1).universe(), 1U);
    QCOMPARE(placed(1, "universe"), QVariant(1LL));
    QCOMPARE(placed(1, "address"), QVariant(30LL));
    patching_->history().undo();
    QCOMPARE(fixture(1).controls().at(0)->address(), 19U);
    QCOMPARE(placed(1, "address"), QVariant(20LL));
    patching_->history().redo();
    QCOMPARE(fixture(1).address(), 30U);
}

void tst_Patching::theNumberThatItHasIsNoStep() {
    QVERIFY(!patching_->moveFixture(1, PlacementNumber::Address, 20));
    QCOMPARE(patching_->history().count(), 0);
}

void tst_Patching::aFixtureWithoutAPlacementStays() {
    settings_ = Settings(QVariantMap{{"views", QVariantList{"Spot"}}});
    QVERIFY(!patching_->moveFixture(0, PlacementNumber::Address, 9));
    QVERIFY(!patching_->moveFixture(3, PlacementNumber::Address, 9));
    QCOMPARE(fixture(0).address(), 1U);
    QVERIFY(!patching_->history().canUndo());
}

// --- History -------------------------------------------------------------------------------------------

void tst_Patching::everyStepIsTold() {
    const QSignalSpy told(patching_.get(), &Patching::patchChanged);
    patching_->removeFixtures({0, 2});
    QCOMPARE(told.size(), 1);
    patching_->history().undo();
    QCOMPARE(told.size(), 2);
    patching_->moveFixture(0, PlacementNumber::Address, 9);
    QCOMPARE(told.size(), 3);
}

void tst_Patching::aHistoryThatIsForgottenCannotBeUndone() {
    patching_->removeFixtures({0});
    patching_->forget();
    QVERIFY(!patching_->history().canUndo());
    QCOMPARE(names(), (QStringList{"Wash", "Bar"}));
}

QTEST_MAIN(tst_Patching)
#include "tst_Patching.moc"
