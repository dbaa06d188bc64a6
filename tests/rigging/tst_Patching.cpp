#include "rigging/Patching.h"

#include "controls/DMXControl.h"
#include "controls/EditView.h"
#include "fixtures/ControlView.h"
#include "fixtures/Profiles.h"
#include "settings/Settings.h"
#include "support/TestRig.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

ControlView& view(std::size_t row) {
    return *ControlView::controlViews()->at(row);
}

QStringList names() {
    QStringList names;
    for (const auto& view : *ControlView::controlViews()) {
        names.append(view->name());
    }
    return names;
}

QStringList keys() {
    QStringList keys;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        keys.append(key);
    }
    return keys;
}

} // namespace

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

    Settings settings_;
    Profiles profiles_;
    TestPlaces places_;
    std::unique_ptr<TestRig> end_; ///< of all views
    std::unique_ptr<Patching> patching_;
};

void tst_Patching::init() {
    settings_ = Settings(QVariantMap{
        {"views", QVariantList{placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan")}),
                               placement("Wash", 1, 20, {controlEntry("Dimmer", 7)}),
                               placement("Bar", 0, 50, {controlEntry("Red")})}}});
    profiles_ = Profiles();
    profiles_.setTable(QVariantMap{{"Par", QVariantList{controlEntry("Level")}}});
    places_ = TestPlaces();
    end_ = std::make_unique<TestRig>();
    ControlView::controlViewsWithSettings(settings_.views(), profiles_, places_);
    patching_ = std::make_unique<Patching>(settings_, profiles_, places_);
}

void tst_Patching::cleanup() {
    patching_.reset();
    end_.reset();
}

// --- Adding --------------------------------------------------------------------------------------------

void tst_Patching::anAddedFixtureStandsBelowTheOthers() {
    const QVariantMap par = placement("Par 1", 2, 100, {QVariantMap{{"profile", "Par"}}});
    patching_->addFixtures({.placements = {par}, .profiles = {}});
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar", "Par 1"}));
    QCOMPARE(settings_.views().at(3).toMap(), par);
    QVERIFY(view(3).window()->isVisible());
    QCOMPARE(view(3).window()->windowTitle(), QString("Par 1 Univ: 2 Addr: 100"));
    QCOMPARE(controlNamed("Par 1.Level").address(), 99U);
    QCOMPARE(patching_->history().undoText(), QString("Add Par 1"));
}

void tst_Patching::anAddedFixtureFindsTheProfilesThatComeWithIt() {
    const QVariantList head{controlEntry("Pan"), controlEntry("Tilt")};
    patching_->addFixtures({.placements = {placement("Head", 0, 1, {QVariantMap{{"profile", "Mover"}}})},
                            .profiles = {{"Mover", head}}});
    QCOMPARE(view(3).controls().size(), std::size_t{2});
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
    QVERIFY(profiles_.profileWithName("Mover").isEmpty());
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan", "Wash.Dimmer"}));
    patching_->history().redo();
    QCOMPARE(placedNames(), (QStringList{"Spot", "Wash", "Bar", "A", "B"}));
    QCOMPARE(view(4).controls().size(), std::size_t{1});
}

void tst_Patching::anAddDoneAgainBringsTheLevelsBack() {
    patching_->addFixtures(
        {.placements = {placement("Par", 0, 1, {QVariantMap{{"profile", "Par"}}})}, .profiles = {}});
    controlNamed("Par.Level").setDMXValue(90, 0);
    patching_->history().undo();
    patching_->history().redo();
    QCOMPARE(controlNamed("Par.Level").value(), 90U);
}

void tst_Patching::aProfileThatWasReplacedIsThereAgain() {
    const QVariantList own{controlEntry("Own")};
    patching_->addProfiles({{"Par", own}}, "Maker Par");
    QCOMPARE(patching_->history().undoText(), QString("Import Maker Par"));
    QCOMPARE(profiles_.profileWithName("Par"), own);
    QCOMPARE(settings_.userProfiles().value("Par").toList(), own);
    patching_->history().undo();
    QCOMPARE(profiles_.profileWithName("Par"), QVariantList{controlEntry("Level")});
    QVERIFY(!settings_.userProfiles().contains("Par"));
}

void tst_Patching::aRigBeginsWithItsFirstFixture() {
    ControlView::reset();
    DMXControl::reset();
    settings_ = Settings();
    patching_->addFixtures(
        {.placements = {placement("Lamp", 0, 1, {controlEntry("Dimmer")})}, .profiles = {}});
    QCOMPARE(names(), QStringList{"Lamp"});
    QCOMPARE(placedNames(), QStringList{"Lamp"});
    patching_->history().undo();
    QCOMPARE(ControlView::count(), std::size_t{0});
    QCOMPARE(settings_.views(), QVariantList());
}

void tst_Patching::nothingToAddIsNoStep() {
    patching_->addFixtures({});
    QCOMPARE(patching_->history().count(), 0);
}

// --- Removing ------------------------------------------------------------------------------------------

void tst_Patching::aRemovedFixtureLeavesEverything() {
    const QPointer<QWidget> window = view(1).window();
    patching_->removeFixtures({1});
    QCOMPARE(names(), (QStringList{"Spot", "Bar"}));
    QCOMPARE(placedNames(), (QStringList{"Spot", "Bar"}));
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan"}));
    QVERIFY(!window);
    QCOMPARE(patching_->history().undoText(), QString("Remove Wash"));
}

void tst_Patching::theOthersStayAsTheyAre() {
    ControlView& spot = view(0);
    ControlView& bar = view(2);
    controlNamed("Bar.Red").setDMXValue(255, 0);
    controlNamed("Spot.Pan").setDMXValue(200, 1e6F);
    spot.setSelectedControl(&controlNamed("Spot.Pan"));
    patching_->removeFixtures({1});
    QCOMPARE(&view(0), &spot);
    QCOMPARE(&view(1), &bar);
    QCOMPARE(controlNamed("Bar.Red").value(), 255U);
    QVERIFY(controlNamed("Spot.Pan").fade().running());
    QCOMPARE(spot.selectedControl(), &controlNamed("Spot.Pan"));
    QVERIFY(spot.window()->isVisible());
    QVERIFY(bar.window()->isVisible());
}

void tst_Patching::undoingARemovalBringsEverythingBack() {
    const QVariantList before = settings_.views();
    DMXControl& dimmer = controlNamed("Wash.Dimmer");
    dimmer.setDMXValue(123, 0);
    dimmer.setTime(2.5F);
    dimmer.makeFirstResponder();
    patching_->removeFixtures({1});
    patching_->history().undo();
    QCOMPARE(names(), (QStringList{"Spot", "Wash", "Bar"}));
    QCOMPARE(settings_.views(), before);
    QCOMPARE(controlNamed("Wash.Dimmer").value(), 123U);
    QCOMPARE(controlNamed("Wash.Dimmer").time(), 2.5F);
    QCOMPARE(view(1).selectedControl(), &controlNamed("Wash.Dimmer"));
    QVERIFY(view(1).window()->isVisible());
    patching_->history().redo();
    QCOMPARE(names(), (QStringList{"Spot", "Bar"}));
    patching_->history().undo();
    QCOMPARE(controlNamed("Wash.Dimmer").value(), 123U);
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
    QCOMPARE(ControlView::count(), std::size_t{0});
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
    QCOMPARE(&controlNamed("Spot.Dimmer"), view(3).controls().at(0).get());
    patching_->removeFixtures({3});
    QCOMPARE(&controlNamed("Spot.Dimmer"), view(0).controls().at(0).get());
    QCOMPARE(keys(), (QStringList{"Bar.Red", "Spot.Dimmer", "Spot.Pan", "Wash.Dimmer"}));
}

void tst_Patching::ofFixturesWithOneKeyTheLastInTheTableIsFound() {
    patching_->addFixtures(
        {.placements = {placement("Spot", 3, 1, {controlEntry("Dimmer")})}, .profiles = {}});
    patching_->removeFixtures({0});
    patching_->history().undo();
    QCOMPARE(&controlNamed("Spot.Dimmer"), view(3).controls().at(0).get());
    QCOMPARE(&controlNamed("Spot.Pan"), view(0).controls().at(1).get());
}

void tst_Patching::windowsKeepTheirPlacesByRow() {
    for (int row = 0; row < 3; ++row) {
        places_.setPlace(QString("faderhall_window_%1").arg(row), QPoint(100 * row, 50));
    }
    patching_->removeFixtures({1});
    QCOMPARE(view(1).autosavename(), QString("faderhall_window_1"));
    QCOMPARE(places_.place("faderhall_window_0"), QPoint(0, 50));
    QCOMPARE(places_.place("faderhall_window_1"), QPoint(200, 50));
    view(1).window()->move(333, 44);
    QTRY_COMPARE(places_.place("faderhall_window_1"), QPoint(333, 44));
    patching_->history().undo();
    QCOMPARE(places_.place("faderhall_window_0"), QPoint(0, 50));
    QCOMPARE(places_.place("faderhall_window_1"), QPoint(100, 50));
    QCOMPARE(places_.place("faderhall_window_2"), QPoint(333, 44));
    QCOMPARE(view(1).window()->pos(), QPoint(100, 50));
    QCOMPARE(view(2).autosavename(), QString("faderhall_window_2"));
}

void tst_Patching::aWindowWithoutAPlaceTakesNobodys() {
    places_ = TestPlaces();
    places_.setPlace("faderhall_window_1", QPoint(100, 50));
    patching_->removeFixtures({1});
    QVERIFY(!places_.place("faderhall_window_1"));
}

void tst_Patching::aFadeAndAnEntryEndWithTheirFixture() {
    DMXControl& dimmer = controlNamed("Wash.Dimmer");
    dimmer.setDMXValue(200, 1e6F);
    dimmer.makeFirstResponder();
    dimmer.keyDown(QKeyEvent(QEvent::KeyPress, Qt::Key_4, Qt::NoModifier, "4"));
    dimmer.mouseDown({3, 3});
    QVERIFY(EditView::isShownBy(&dimmer));
    patching_->removeFixtures({1});
    QCoreApplication::processEvents();
    patching_->history().undo();
    QCOMPARE(controlNamed("Wash.Dimmer").value(), 7U);
    QVERIFY(!controlNamed("Wash.Dimmer").fade().running());
    QVERIFY(!EditView::isShownBy(&controlNamed("Wash.Dimmer")));
}

// --- Moving --------------------------------------------------------------------------------------------

void tst_Patching::aMoveIsAStep() {
    QVERIFY(patching_->moveFixture(1, PlacementNumber::Address, 30));
    QVERIFY(patching_->moveFixture(1, PlacementNumber::Universe, 5));
    QCOMPARE(view(1).window()->windowTitle(), QString("Wash Univ: 5 Addr: 30"));
    QCOMPARE(patching_->history().undoText(), QString("Move Wash"));
    patching_->history().undo();
    QCOMPARE(view(1).universe(), 1U);
    QCOMPARE(placed(1, "universe"), QVariant(1LL));
    QCOMPARE(placed(1, "address"), QVariant(30LL));
    patching_->history().undo();
    QCOMPARE(view(1).controls().at(0)->address(), 19U);
    QCOMPARE(placed(1, "address"), QVariant(20LL));
    patching_->history().redo();
    QCOMPARE(view(1).address(), 30U);
}

void tst_Patching::theNumberThatItHasIsNoStep() {
    QVERIFY(!patching_->moveFixture(1, PlacementNumber::Address, 20));
    QCOMPARE(patching_->history().count(), 0);
}

void tst_Patching::aFixtureWithoutAPlacementStays() {
    settings_ = Settings(QVariantMap{{"views", QVariantList{"Spot"}}});
    QVERIFY(!patching_->moveFixture(0, PlacementNumber::Address, 9));
    QVERIFY(!patching_->moveFixture(3, PlacementNumber::Address, 9));
    QCOMPARE(view(0).address(), 1U);
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
