#include "settings/Settings.h"

#include <QTest>

namespace {

void setAddress(Settings& settings, qsizetype index, int address) {
    Placement placement = settings.placement(index).value_or(Placement());
    placement.setAddress(address);
    settings.setPlacement(index, placement);
}

void setUniverse(Settings& settings, qsizetype index, int universe) {
    Placement placement = settings.placement(index).value_or(Placement());
    placement.setUniverse(universe);
    settings.setPlacement(index, placement);
}

} // namespace

class tst_Settings : public QObject {
    Q_OBJECT

private slots:
    void withoutARigEverythingReadsAsEmpty();
    void withoutARigWritingGoesNowhere();
    void placementsKeepTheirOrder();
    void aMovedFixtureKeepsTheRestOfItsPlacement();
    void aPlacementThatIsNotThereIsNotMoved_data();
    void aPlacementThatIsNotThereIsNotMoved();
    void sectionsOfAWrongTypeReadAsEmpty_data();
    void sectionsOfAWrongTypeReadAsEmpty();
    void unknownKeysAreKept();
    void aCueTableIsMadeOnceAndKept();
    void aCueTableOfAWrongTypeSwallowsWritesUntilOneIsMade();
    void withoutACueTableCuesAreNotWritten();
    void cuesAreWrittenReplacedAndRemoved();
    void aCopyOfTheDictionaryIsNotChanged();
};

void tst_Settings::withoutARigEverythingReadsAsEmpty() {
    const Settings settings;
    QVERIFY(!settings.dictionary());
    QCOMPARE(settings.views(), QVariantList());
    QCOMPARE(settings.userProfiles(), QVariantMap());
    QCOMPARE(settings.cues(), QVariantMap());
    QVERIFY(!settings.hasCues());
}

void tst_Settings::withoutARigWritingGoesNowhere() {
    Settings settings;
    settings.createCues();
    settings.setCue("1", "cue data goes here");
    settings.removeCue("1");
    QVERIFY(!settings.placement(0));
    QVERIFY(!settings.dictionary());
}

void tst_Settings::placementsKeepTheirOrder() {
    const QVariantList placements{QVariantMap{{"name", "Wash"}}, QVariantMap{{"name", "Spot"}}};
    QCOMPARE(Settings(QVariantMap{{"views", placements}}).views(), placements);
}

void tst_Settings::aMovedFixtureKeepsTheRestOfItsPlacement() {
    const QVariantMap wash{{"name", "Wash"}, {"address", "1"}, {"note", "left"}};
    const QVariantMap spot{{"name", "Spot"}, {"address", 20LL}, {"universe", 1LL}};
    Settings settings(QVariantMap{{"views", QVariantList{wash, spot}}});
    setAddress(settings, 0, 17);
    setUniverse(settings, 1, -2);

    const QVariantMap movedWash{{"name", "Wash"}, {"address", 17LL}, {"note", "left"}};
    const QVariantMap movedSpot{{"name", "Spot"}, {"address", 20LL}, {"universe", -2LL}};
    QCOMPARE(settings.views(), (QVariantList{movedWash, movedSpot}));
    QCOMPARE(settings.views().at(0).toMap().value("address").typeId(), int{QMetaType::LongLong});
}

void tst_Settings::aPlacementThatIsNotThereIsNotMoved_data() {
    QTest::addColumn<QVariant>("views");
    QTest::addColumn<int>("index");

    const QVariantList one{QVariantMap{{"name", "Wash"}}};
    QTest::newRow("before the first") << QVariant(one) << -1;
    QTest::newRow("behind the last") << QVariant(one) << 1;
    QTest::newRow("no placements") << QVariant(QVariantList()) << 0;
    QTest::newRow("placements of a wrong type") << QVariant("Wash") << 0;
    QTest::newRow("a placement of a wrong type") << QVariant(QVariantList{"Wash"}) << 0;
}

void tst_Settings::aPlacementThatIsNotThereIsNotMoved() {
    QFETCH(const QVariant, views);
    QFETCH(const int, index);

    const QVariantMap rig{{"views", views}};
    Settings settings(rig);
    QVERIFY(!settings.placement(index));
    QCOMPARE(settings.dictionary(), std::optional(rig));
}

void tst_Settings::sectionsOfAWrongTypeReadAsEmpty_data() {
    QTest::addColumn<QVariant>("value");

    QTest::newRow("a string") << QVariant("views");
    QTest::newRow("an integer") << QVariant(7LL);
    QTest::newRow("a boolean") << QVariant(true);
    QTest::newRow("data") << QVariant(QByteArray("views"));
}

void tst_Settings::sectionsOfAWrongTypeReadAsEmpty() {
    QFETCH(const QVariant, value);

    const QVariantMap rig{{"views", value}, {"profiles", value}, {"cues", value}};
    const Settings settings(rig);
    QCOMPARE(settings.views(), QVariantList());
    QCOMPARE(settings.userProfiles(), QVariantMap());
    QCOMPARE(settings.cues(), QVariantMap());
    QVERIFY(!settings.hasCues());
    QCOMPARE(settings.dictionary(), std::optional(rig));
}

void tst_Settings::unknownKeysAreKept() {
    Settings settings(
        QVariantMap{{"house", "Old Town"}, {"views", QVariantList{QVariantMap{{"gel", 201LL}}}}});
    settings.createCues();
    setAddress(settings, 0, 5);
    QCOMPARE(settings.dictionary()->value("house"), QVariant("Old Town"));
    QCOMPARE(settings.views().at(0).toMap().value("gel"), QVariant(201LL));
}

void tst_Settings::aCueTableIsMadeOnceAndKept() {
    Settings settings{QVariantMap()};
    QVERIFY(!settings.hasCues());
    settings.createCues();
    QVERIFY(settings.hasCues());
    QCOMPARE(settings.dictionary(), std::optional(QVariantMap{{"cues", QVariantMap()}}));
    settings.setCue("1", QVariantList());
    settings.createCues();
    QCOMPARE(settings.cues(), (QVariantMap{{"1", QVariantList()}}));
}

void tst_Settings::aCueTableOfAWrongTypeSwallowsWritesUntilOneIsMade() {
    Settings settings(QVariantMap{{"cues", QVariantList{"1"}}});
    settings.setCue("1", QVariantList());
    settings.removeCue("1");
    QCOMPARE(settings.dictionary(), std::optional(QVariantMap{{"cues", QVariantList{"1"}}}));
    settings.createCues();
    QCOMPARE(settings.dictionary(), std::optional(QVariantMap{{"cues", QVariantMap()}}));
}

void tst_Settings::withoutACueTableCuesAreNotWritten() {
    Settings settings{QVariantMap()};
    settings.setCue("1", QVariantList());
    QCOMPARE(settings.dictionary(), std::optional(QVariantMap()));
}

void tst_Settings::cuesAreWrittenReplacedAndRemoved() {
    Settings settings(QVariantMap{{"cues", QVariantMap{{"1", "cue data goes here"}, {"2", QVariantList()}}}});
    const QVariantList records{QVariantMap{{"key", "Spot.Dimmer"}}};
    settings.setCue("1", records);
    settings.setCue(" 3 ", QVariantList());
    settings.removeCue("2");
    settings.removeCue("no such cue");
    QCOMPARE(settings.cues(), (QVariantMap{{"1", records}, {" 3 ", QVariantList()}}));
}

void tst_Settings::aCopyOfTheDictionaryIsNotChanged() {
    const QVariantMap rig{{"views", QVariantList{QVariantMap{{"address", 1LL}}}}, {"cues", QVariantMap()}};
    Settings settings(rig);
    settings.setCue("1", QVariantList());
    setAddress(settings, 0, 2);
    QCOMPARE(rig.value("cues"), QVariant(QVariantMap()));
    QCOMPARE(rig.value("views"), QVariant(QVariantList{QVariantMap{{"address", 1LL}}}));
}

QTEST_APPLESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
