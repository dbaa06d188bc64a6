#include "panels/FixtureWindows.h"

#include "support/TestPlaces.h"
#include "support/TestRig.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

QVariantMap fixture(const QString& name) {
    return placement(name, 0, 1, {controlEntry("1"), controlEntry("2"), controlEntry("3")});
}

QVariantList fixtures(int count) {
    QVariantList placements;
    for (int number = 1; number <= count; ++number) {
        placements.append(fixture(QString("F%1").arg(number)));
    }
    return placements;
}

int windowsOnTheScreen() {
    int shown = 0;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        shown += window->isVisible() ? 1 : 0;
    }
    return shown;
}

} // namespace

/// The windows of a rig's fixtures, which come and go with them.
class tst_FixtureWindows : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void beforeTheyAreOpenedThereAreNone();
    void openingShowsThoseThatAreThere();
    void anEmptyRigHasNoWindows();
    void windowsAreNumberedByTheirPlaceInTheRig();
    void windowsAreListedInTheOrderOfTheRig();
    void aWindowTakesThePlaceOfItsRow();

    void sixteenWindowsComeAtATime();
    void eventsAreHandledWhileTheyCome();
    void theFirstAndAllOfThemAreTold();
    void whatTheOperatorWorksInKeepsTheKeys_data();
    void whatTheOperatorWorksInKeepsTheKeys();
    void noWindowComesWhileAMenuIsOpen();
    void windowOfMakesOneThatIsStillOnItsWay();
    void whatGoesWhileItsWindowIsOnItsWayGetsNone();
    void whatComesWhileOthersAreOnTheirWayComesToo();

    void theNewestWindowIsInFront();
    void ofSeveralFixturesTheLastIsInFront();
    void ofMoreThanComeAtOnceTheLastIsInFront();
    void ofFixturesInTheMiddleTheLastOfThemIsInFront();
    void theFixtureThatWasToHaveTheKeysMayGo();

    void windowsBelowAreRenamedWhenFixturesComeBetween();
    void windowsBelowAreRenamedWhenFixturesGo();
    void aRenamedWindowRemembersItsPlaceUnderItsNewName();

    void windowsGoWithTheirFixtures();
    void anotherRigHasWindowsOfItsOwn();
    void whatGoesIsOutOfTheListBeforeThatIsTold();
    void windowsInTheMiddleOfThingsLeaveNothingBehind();

private:
    QStringList autosavenames() const {
        QStringList names;
        for (const FixtureWindow* const window : windows_->windows()) {
            names.append(window->autosavename());
        }
        return names;
    }
    QStringList fixtureNames() const {
        QStringList names;
        for (const FixtureWindow* const window : windows_->windows()) {
            names.append(window->fixture().name());
        }
        return names;
    }
    bool waitForAll() const {
        return QTest::qWaitFor([this] { return windows_->areAllShown(); });
    }

    std::unique_ptr<TestPlaces> places_;
    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<FixtureWindows> windows_;
};

void tst_FixtureWindows::init() {
    places_ = std::make_unique<TestPlaces>();
    rig_ = std::make_unique<TestRig>();
    windows_ = std::make_unique<FixtureWindows>(rig_->fixtures(), *places_);
}

void tst_FixtureWindows::cleanup() {
    windows_.reset();
    rig_.reset();
    QCOMPARE(windowsOnTheScreen(), 0);
}

void tst_FixtureWindows::beforeTheyAreOpenedThereAreNone() {
    rig_->add(fixture("A"));
    QCoreApplication::processEvents();
    QVERIFY(windows_->windows().empty());
    QVERIFY(!windows_->at(0));
    QCOMPARE(windowsOnTheScreen(), 0);
}

void tst_FixtureWindows::openingShowsThoseThatAreThere() {
    rig_->add(fixture("A"));
    rig_->add(fixture("B"));
    windows_->open();
    QVERIFY(windows_->areAllShown());
    QCOMPARE(fixtureNames(), QStringList({"A", "B"}));
    QCOMPARE(windowsOnTheScreen(), 2);
}

void tst_FixtureWindows::anEmptyRigHasNoWindows() {
    const QSignalSpy changed(windows_.get(), &FixtureWindows::changed);
    windows_->open();
    QVERIFY(windows_->areAllShown());
    QVERIFY(windows_->windows().empty());
    QCOMPARE(changed.count(), 1);
}

void tst_FixtureWindows::windowsAreNumberedByTheirPlaceInTheRig() {
    const QStringList three{"faderhall_window_0", "faderhall_window_1", "faderhall_window_2"};
    windows_->open();
    for (const char* name : {"A", "B", "C"}) {
        rig_->add(fixture(name));
    }
    QCOMPARE(autosavenames(), three);
    rig_->fixtures().remove(0, 3);
    for (const char* name : {"D", "E", "F"}) {
        rig_->add(fixture(name));
    }
    QCOMPARE(autosavenames(), three);
}

void tst_FixtureWindows::windowsAreListedInTheOrderOfTheRig() {
    windows_->open();
    rig_->add(fixture("B"));
    rig_->add(fixture("A"));
    rig_->fixtures().insert(1, {fixture("C")});
    QCOMPARE(fixtureNames(), QStringList({"B", "C", "A"}));
    for (std::size_t row = 0; row < 3; ++row) {
        QCOMPARE(&windows_->at(row)->fixture(), rig_->fixtures().at(row));
    }
    QVERIFY(!windows_->at(3));
}

void tst_FixtureWindows::aWindowTakesThePlaceOfItsRow() {
    for (int row = 0; row < 20; ++row) {
        places_->setPlace(autosavenameOfRow(static_cast<std::size_t>(row)), QPoint(10 + row, 20 + row));
    }
    rig_->fixtures().insert(0, fixtures(20));
    windows_->open();
    QVERIFY(waitForAll());
    for (int row = 0; row < 20; ++row) {
        QCOMPARE(windows_->at(static_cast<std::size_t>(row))->pos(), QPoint(10 + row, 20 + row));
    }
}

void tst_FixtureWindows::sixteenWindowsComeAtATime() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    QCOMPARE(windows_->windows().size(), 16);
    QVERIFY(windows_->at(15));
    QVERIFY(!windows_->at(16));
    QVERIFY(!windows_->areAllShown());
    QVERIFY(QTest::qWaitFor([this] { return windows_->windows().size() > 16; }));
    QCOMPARE(windows_->windows().size(), 32);
    QVERIFY(!windows_->areAllShown());
    QVERIFY(waitForAll());
    QCOMPARE(windows_->windows().size(), 40);
    QCOMPARE(windowsOnTheScreen(), 40);
    QCOMPARE(autosavenames().last(), "faderhall_window_39");
}

void tst_FixtureWindows::eventsAreHandledWhileTheyCome() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    qsizetype shown = 0;
    QTimer::singleShot(0, this, [&] { shown = windows_->windows().size(); });
    QVERIFY(waitForAll());
    QVERIFY(shown > 0 && shown < 40);
}

void tst_FixtureWindows::theFirstAndAllOfThemAreTold() {
    windows_->open();
    QSignalSpy changed(windows_.get(), &FixtureWindows::changed);
    rig_->fixtures().insert(0, fixtures(16));
    QCOMPARE(changed.count(), 1); // as many as come at once
    changed.clear();
    qsizetype shown = 0;
    connect(windows_.get(), &FixtureWindows::changed, this, [&] { shown = windows_->windows().size(); });
    rig_->fixtures().insert(16, fixtures(33));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(shown, 32);
    QVERIFY(waitForAll());
    QCOMPARE(changed.count(), 2);
    QCOMPARE(shown, 49);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 2);
}

void tst_FixtureWindows::whatTheOperatorWorksInKeepsTheKeys_data() {
    QTest::addColumn<bool>("isKey");

    QTest::newRow("a key") << true;
    QTest::newRow("the mouse") << false;
}

void tst_FixtureWindows::whatTheOperatorWorksInKeepsTheKeys() {
    QFETCH(const bool, isKey);

    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    QVERIFY(!windows_->wereTakenOver());
    ControlView& view = windows_->at(0)->view();
    if (isKey) {
        QTest::keyClick(&view, Qt::Key_1);
    } else {
        QTest::mouseClick(&view, Qt::LeftButton);
    }
    QVERIFY(waitForAll());
    QVERIFY(windows_->wereTakenOver());
    rig_->fixtures().insert(0, fixtures(1)); // what comes later asks anew
    QVERIFY(!windows_->wereTakenOver());
    QTest::keyClick(&view, Qt::Key_1); // all are there
    QVERIFY(!windows_->wereTakenOver());
}

void tst_FixtureWindows::noWindowComesWhileAMenuIsOpen() {
    windows_->open();
    QMenu menu;
    menu.addAction("Item");
    rig_->fixtures().insert(0, fixtures(40));
    menu.popup({});
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
    }
    QCOMPARE(windows_->windows().size(), 16);
    menu.close();
    QVERIFY(waitForAll());
}

void tst_FixtureWindows::windowOfMakesOneThatIsStillOnItsWay() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    Fixture& late = *rig_->fixtures().at(30);
    FixtureWindow& window = windows_->windowOf(late);
    QCOMPARE(&window.fixture(), &late);
    QVERIFY(window.isVisible());
    QCOMPARE(window.autosavename(), "faderhall_window_30");
    QCOMPARE(windows_->at(30), &window);
    QCOMPARE(&windows_->windowOf(late), &window);
    QCOMPARE(windows_->windows().size(), 17);
    QVERIFY(waitForAll());
    QCOMPARE(windows_->at(30), &window);
    QCOMPARE(windowsOnTheScreen(), 40);
}

void tst_FixtureWindows::whatGoesWhileItsWindowIsOnItsWayGetsNone() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    rig_->fixtures().remove(10, 29); // the last one stays
    QVERIFY(waitForAll());
    QCOMPARE(windowsOnTheScreen(), 11);
    QCOMPARE(fixtureNames().last(), "F40");
    QCOMPARE(autosavenames().last(), "faderhall_window_10");
}

void tst_FixtureWindows::whatComesWhileOthersAreOnTheirWayComesToo() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    rig_->fixtures().insert(0, {fixture("First")});
    QVERIFY(waitForAll());
    QCOMPARE(windowsOnTheScreen(), 41);
    QCOMPARE(fixtureNames().first(), "First");
    for (std::size_t row = 0; row < 41; ++row) {
        QCOMPARE(&windows_->at(row)->fixture(), rig_->fixtures().at(row));
        QCOMPARE(windows_->at(row)->autosavename(), autosavenameOfRow(row));
    }
    QVERIFY(QTest::qWaitForWindowActive(windows_->at(0)));
}

void tst_FixtureWindows::theNewestWindowIsInFront() {
    windows_->open();
    rig_->add(fixture("A"));
    rig_->add(fixture("B"));
    QVERIFY(QTest::qWaitForWindowActive(windows_->at(1)));
    QVERIFY(windows_->at(1)->view().hasFocus());
    QVERIFY(!windows_->at(0)->isActiveWindow());
}

void tst_FixtureWindows::ofSeveralFixturesTheLastIsInFront() {
    windows_->open();
    rig_->fixtures().replaceAll({});
    rig_->fixtures().replaceAll({fixture("A"), fixture("B"), fixture("C")});
    QCOMPARE(windows_->windows().size(), 3);
    QVERIFY(QTest::qWaitForWindowActive(windows_->at(2)));
    for (FixtureWindow* const window : windows_->windows()) {
        QVERIFY(window->isVisible());
        QCOMPARE(window->isActiveWindow(), window == windows_->at(2));
    }
}

void tst_FixtureWindows::ofMoreThanComeAtOnceTheLastIsInFront() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(40));
    QVERIFY(waitForAll());
    QVERIFY(QTest::qWaitForWindowActive(windows_->at(39)));
}

void tst_FixtureWindows::ofFixturesInTheMiddleTheLastOfThemIsInFront() {
    windows_->open();
    rig_->add(fixture("A"));
    rig_->add(fixture("B"));
    rig_->fixtures().insert(1, fixtures(20));
    QVERIFY(waitForAll());
    QVERIFY(QTest::qWaitForWindowActive(windows_->at(20)));
    QCOMPARE(windows_->at(20)->fixture().name(), "F20");
}

void tst_FixtureWindows::theFixtureThatWasToHaveTheKeysMayGo() {
    windows_->open();
    rig_->add(fixture("A"));
    rig_->fixtures().insert(1, fixtures(20));
    rig_->fixtures().remove(20, 1);
    QVERIFY(waitForAll());
    QCOMPARE(windowsOnTheScreen(), 20);
    QCOMPARE(fixtureNames().last(), "F19");
}

void tst_FixtureWindows::windowsBelowAreRenamedWhenFixturesComeBetween() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(3));
    const FixtureWindow* const last = windows_->at(2);
    rig_->fixtures().insert(1, {fixture("X"), fixture("Y")});
    QCOMPARE(windows_->at(4), last);
    QCOMPARE(autosavenames(), QStringList({"faderhall_window_0", "faderhall_window_1", "faderhall_window_2",
                                           "faderhall_window_3", "faderhall_window_4"}));
}

void tst_FixtureWindows::windowsBelowAreRenamedWhenFixturesGo() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(4));
    const FixtureWindow* const last = windows_->at(3);
    rig_->fixtures().remove(1, 2);
    QCOMPARE(windows_->at(1), last);
    QCOMPARE(autosavenames(), QStringList({"faderhall_window_0", "faderhall_window_1"}));
}

void tst_FixtureWindows::aRenamedWindowRemembersItsPlaceUnderItsNewName() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(2));
    FixtureWindow& window = *windows_->at(1);
    rig_->fixtures().remove(0, 1);
    QCOMPARE(places_->place("faderhall_window_0"), std::nullopt);
    window.move(12, 34);
    QCoreApplication::processEvents();
    QCOMPARE(places_->place("faderhall_window_0"), std::optional(QPoint(12, 34)));
    QCOMPARE(places_->place("faderhall_window_1"), std::nullopt);
}

void tst_FixtureWindows::windowsGoWithTheirFixtures() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(3));
    const QPointer<FixtureWindow> going = windows_->at(1);
    rig_->fixtures().remove(1, 1);
    QVERIFY(!going);
    QCOMPARE(windowsOnTheScreen(), 2);
    QCOMPARE(fixtureNames(), QStringList({"F1", "F3"}));
    rig_->fixtures().remove(0, 2);
    QCOMPARE(windowsOnTheScreen(), 0);
    QVERIFY(windows_->windows().empty());
}

void tst_FixtureWindows::anotherRigHasWindowsOfItsOwn() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(20));
    rig_->fixtures().replaceAll({fixture("A"), fixture("B")});
    QVERIFY(waitForAll());
    QCOMPARE(fixtureNames(), QStringList({"A", "B"}));
    QCOMPARE(windowsOnTheScreen(), 2);
}

void tst_FixtureWindows::whatGoesIsOutOfTheListBeforeThatIsTold() {
    windows_->open();
    rig_->fixtures().insert(0, fixtures(3));
    QList<QStringList> told;
    connect(windows_.get(), &FixtureWindows::changed, this, [&] { told.append(fixtureNames()); });
    rig_->fixtures().remove(0, 1);
    QCOMPARE(told, QList<QStringList>({{"F2", "F3"}}));
}

void tst_FixtureWindows::windowsInTheMiddleOfThingsLeaveNothingBehind() {
    windows_->open();
    rig_->add(fixture("A"));
    rig_->add(fixture("B"));
    FixtureWindow& first = *windows_->at(0);
    FixtureWindow& second = *windows_->at(1);
    QVERIFY(QTest::qWaitForWindowActive(&second));
    first.view().select(*first.fixture().controls().front());
    second.view().select(*second.fixture().controls().front());
    QTest::keyClick(second.windowHandle(), '7');                                 // in mid-entry
    QTest::mousePress(second.windowHandle(), Qt::LeftButton, {}, QPoint(5, 45)); // in mid-drag
    QTest::mouseMove(second.windowHandle(), QPoint(50, 45));
    second.fixture().controls().back()->setDMXValue(200, 2); // in mid-fade
    rig_->fixtures().remove(0, 2);
    QCOMPARE(rig_->faders().count(), std::size_t{0});
    QCoreApplication::processEvents();
    QCOMPARE(windowsOnTheScreen(), 0);
    rig_->add(fixture("C"));
    FixtureWindow& next = *windows_->at(0);
    QVERIFY(QTest::qWaitForWindowActive(&next));
    QTest::mouseRelease(next.windowHandle(), Qt::LeftButton, {}, QPoint(50, 45));
    rig_->tick();
    QCOMPARE(rig_->engine().slotLevels(0), Engine::SlotLevels{});
    QVERIFY(!next.findChild<QLabel*>("gEditView"));
}

QTEST_MAIN(tst_FixtureWindows)
#include "tst_FixtureWindows.moc"
