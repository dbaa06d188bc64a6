#include "settings/Configurations.h"

#include <QTest>

namespace {

QVariantMap fixtureAt(const QVariant& universe) {
    return {{"name", "Wash"}, {"address", 10LL}, {"universe", universe}};
}

QVariantMap rigOf(const QVariantList& views) {
    return {{"views", views}};
}

QVariantList universes(const std::optional<QVariantMap>& configuration) {
    QVariantList found;
    for (const QVariant& view : configuration.value_or(QVariantMap()).value("views").toList()) {
        found.append(view.toMap().value("universe"));
    }
    return found;
}

} // namespace

class tst_Configurations : public QObject {
    Q_OBJECT

private slots:
    void withoutATableThereIsNothing();
    void theDefaultNameIsNoConfiguration();
    void aDefaultThatIsNoNameReadsAsNone_data();
    void aDefaultThatIsNoNameReadsAsNone();
    void aDefaultNameMayBeEmpty();
    void configurationsAreFoundByName();
    void whatIsNoDictionaryIsListedAndNotFound();
    void anOffsetMovesEveryFixture();
    void anOffsetStartsFromTheTableEachTime();
    void universesAreReadAsNumbers_data();
    void universesAreReadAsNumbers();
    void anUnknownConfigurationIsNotShifted();
    void aConfigurationWithoutFixturesHasAnEmptyListOfThem();
    void theRestOfAConfigurationIsKept();
    void whatIsNoPlacementStaysAsItIs();
};

void tst_Configurations::withoutATableThereIsNothing() {
    const Configurations configs;
    QCOMPARE(configs.names(), QStringList());
    QVERIFY(configs.defaultName().isNull());
    QVERIFY(!configs.configuration("Small Stage"));
    QVERIFY(!configs.shiftedConfiguration("Small Stage", 1));
}

void tst_Configurations::theDefaultNameIsNoConfiguration() {
    const Configurations configs(QVariantMap{
        {"Small Stage", rigOf({})}, {"_default_configuration", "Small Stage"}, {"Foyer", rigOf({})}});
    QCOMPARE(configs.names(), (QStringList{"Foyer", "Small Stage"}));
    QCOMPARE(configs.defaultName(), QString("Small Stage"));
    QVERIFY(!configs.configuration("_default_configuration"));
}

void tst_Configurations::aDefaultThatIsNoNameReadsAsNone_data() {
    QTest::addColumn<QVariant>("value");

    QTest::newRow("a dictionary") << QVariant(rigOf({}));
    QTest::newRow("an array") << QVariant(QVariantList{"Foyer"});
    QTest::newRow("an integer") << QVariant(1LL);
    QTest::newRow("a boolean") << QVariant(true);
    QTest::newRow("data") << QVariant(QByteArray("Foyer"));
}

void tst_Configurations::aDefaultThatIsNoNameReadsAsNone() {
    QFETCH(const QVariant, value);

    const Configurations configs(QVariantMap{{"Foyer", rigOf({})}, {"_default_configuration", value}});
    QVERIFY(configs.defaultName().isNull());
    QCOMPARE(configs.names(), QStringList{"Foyer"});
    QVERIFY(!configs.configuration("_default_configuration"));
}

void tst_Configurations::aDefaultNameMayBeEmpty() {
    const Configurations configs(QVariantMap{{"_default_configuration", ""}});
    QVERIFY(!configs.defaultName().isNull());
    QCOMPARE(configs.defaultName(), QString(""));
}

void tst_Configurations::configurationsAreFoundByName() {
    const QVariantMap foyer = rigOf({fixtureAt(3LL)});
    const Configurations configs(QVariantMap{{"Foyer", foyer}, {"Stage", rigOf({})}});
    QCOMPARE(configs.configuration("Foyer"), std::optional(foyer));
    QVERIFY(!configs.configuration("foyer"));
    QVERIFY(!configs.configuration({}));
}

void tst_Configurations::whatIsNoDictionaryIsListedAndNotFound() {
    const Configurations configs(QVariantMap{{"Foyer", "soon"}});
    QCOMPARE(configs.names(), QStringList{"Foyer"});
    QVERIFY(!configs.configuration("Foyer"));
    QVERIFY(!configs.shiftedConfiguration("Foyer", 0));
}

void tst_Configurations::anOffsetMovesEveryFixture() {
    const Configurations configs(QVariantMap{{"Tour", rigOf({fixtureAt(0LL), fixtureAt(1LL)})}});
    const auto shifted = configs.shiftedConfiguration("Tour", 2);
    QCOMPARE(universes(shifted), (QVariantList{2LL, 3LL}));
    QCOMPARE(shifted->value("views").toList().at(0).toMap().value("address"), QVariant(10LL));
}

void tst_Configurations::anOffsetStartsFromTheTableEachTime() {
    const Configurations configs(QVariantMap{{"Tour", rigOf({fixtureAt(0LL), fixtureAt(1LL)})}});
    configs.shiftedConfiguration("Tour", 2);
    QCOMPARE(universes(configs.shiftedConfiguration("Tour", 0)), (QVariantList{0LL, 1LL}));
    QCOMPARE(universes(configs.configuration("Tour")), (QVariantList{0LL, 1LL}));
}

void tst_Configurations::universesAreReadAsNumbers_data() {
    QTest::addColumn<QVariant>("universe");
    QTest::addColumn<int>("offset");
    QTest::addColumn<qlonglong>("shifted");

    QTest::newRow("digits") << QVariant("4") << 1 << 5LL;
    QTest::newRow("digits and more") << QVariant("4th") << 1 << 5LL;
    QTest::newRow("no number") << QVariant("front") << 3 << 3LL;
    QTest::newRow("none at all") << QVariant() << 3 << 3LL;
    QTest::newRow("a real") << QVariant(2.9) << 1 << 3LL;
    QTest::newRow("an array") << QVariant(QVariantList{1LL}) << 1 << 1LL;
    QTest::newRow("a negative offset") << QVariant(1LL) << -3 << -2LL;
    QTest::newRow("as high as it gets") << QVariant(2147483646LL) << 1 << 2147483647LL;
    QTest::newRow("past the highest") << QVariant(2147483647LL) << 1 << 2147483647LL;
    QTest::newRow("past the lowest") << QVariant(-2147483648LL) << -1 << -2147483648LL;
    QTest::newRow("beyond 32 bits") << QVariant(9000000000LL) << 0 << 2147483647LL;
}

void tst_Configurations::universesAreReadAsNumbers() {
    QFETCH(const QVariant, universe);
    QFETCH(const int, offset);
    QFETCH(const qlonglong, shifted);

    const Configurations configs(QVariantMap{{"Tour", rigOf({fixtureAt(universe)})}});
    QCOMPARE(universes(configs.shiftedConfiguration("Tour", offset)), QVariantList{shifted});
}

void tst_Configurations::anUnknownConfigurationIsNotShifted() {
    QVERIFY(!Configurations(QVariantMap{{"Tour", rigOf({})}}).shiftedConfiguration("Foyer", 0));
}

void tst_Configurations::aConfigurationWithoutFixturesHasAnEmptyListOfThem() {
    const Configurations configs(
        QVariantMap{{"Empty", QVariantMap()}, {"Wrong", QVariantMap{{"views", 5LL}}}});
    QCOMPARE(configs.shiftedConfiguration("Empty", 1), std::optional(rigOf({})));
    QCOMPARE(configs.shiftedConfiguration("Wrong", 1), std::optional(rigOf({})));
}

void tst_Configurations::theRestOfAConfigurationIsKept() {
    const QVariantMap cues{{"1", "cue data goes here"}};
    const Configurations configs(
        QVariantMap{{"Tour", QVariantMap{{"views", QVariantList()}, {"cues", cues}, {"house", "Old Town"}}}});
    const auto shifted = configs.shiftedConfiguration("Tour", 1);
    QCOMPARE(shifted->value("cues"), QVariant(cues));
    QCOMPARE(shifted->value("house"), QVariant("Old Town"));
}

void tst_Configurations::whatIsNoPlacementStaysAsItIs() {
    const Configurations configs(QVariantMap{{"Tour", rigOf({"to come", fixtureAt(1LL)})}});
    const QVariantList views = configs.shiftedConfiguration("Tour", 1)->value("views").toList();
    QCOMPARE(views, (QVariantList{"to come", fixtureAt(2LL)}));
}

QTEST_APPLESS_MAIN(tst_Configurations)
#include "tst_Configurations.moc"
