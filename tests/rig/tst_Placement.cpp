#include "rig/Placement.h"

#include <QTest>

#include <limits>

class tst_Placement : public QObject {
    Q_OBJECT

private slots:
    void anEntryIsReadByItsKeys();
    void whatIsMissingReadsAsNothing_data();
    void whatIsMissingReadsAsNothing();
    void numbersMayBeTextsAndEndAt32Bits_data();
    void numbersMayBeTextsAndEndAt32Bits();
    void anUnchangedEntryIsWrittenAsItWasRead_data();
    void anUnchangedEntryIsWrittenAsItWasRead();
    void onlyWhatIsSetIsWrittenAnew_data();
    void onlyWhatIsSetIsWrittenAnew();
    void whatIsSetIsReadAgain();
    void aCopyIsChangedAlone();
};

void tst_Placement::anEntryIsReadByItsKeys() {
    const QVariantList profiles{QVariantMap{{"profile", "Head"}}};
    const Placement placement = Placement::fromEntry(QVariantMap{
        {"name", "Spot"}, {"universe", -1LL}, {"address", 17LL}, {"layer", 3LL}, {"profiles", profiles}});
    QCOMPARE(placement.name(), QString("Spot"));
    QCOMPARE(placement.universe(), -1);
    QCOMPARE(placement.address(), 17U);
    QCOMPARE(placement.layer(), 3U);
    QCOMPARE(placement.profiles(), profiles);
}

void tst_Placement::whatIsMissingReadsAsNothing_data() {
    QTest::addColumn<QVariant>("entry");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("a text") << QVariant("Spot");
    QTest::newRow("an array") << QVariant(QVariantList{QVariantMap{{"name", "Spot"}}});
    QTest::newRow("an empty dictionary") << QVariant(QVariantMap());
    QTest::newRow("other keys") << QVariant(QVariantMap{{"Name", "Spot"}, {"Address", 2LL}});
    QTest::newRow("wrong types") << QVariant(QVariantMap{{"name", 1LL},
                                                         {"universe", QVariantList{1LL}},
                                                         {"address", QByteArray("7")},
                                                         {"layer", QVariantMap()},
                                                         {"profiles", "Head"}});
}

void tst_Placement::whatIsMissingReadsAsNothing() {
    QFETCH(const QVariant, entry);

    const Placement placement = Placement::fromEntry(entry);
    QVERIFY(placement.name().isNull());
    QCOMPARE(placement.universe(), 0);
    QCOMPARE(placement.address(), 0U);
    QCOMPARE(placement.layer(), 0U);
    QVERIFY(placement.profiles().isEmpty());
}

void tst_Placement::numbersMayBeTextsAndEndAt32Bits_data() {
    using Limits = std::numeric_limits<std::int32_t>;
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<qint32>("number");

    QTest::newRow("a text") << QVariant("12") << 12;
    QTest::newRow("a text that goes on") << QVariant(" -12abc") << -12;
    QTest::newRow("a text without a number") << QVariant("twelve") << 0;
    QTest::newRow("an empty text") << QVariant("") << 0;
    QTest::newRow("a real") << QVariant(2.9) << 2;
    QTest::newRow("true") << QVariant(true) << 1;
    QTest::newRow("the highest") << QVariant(2'147'483'647LL) << Limits::max();
    QTest::newRow("one above") << QVariant(2'147'483'648LL) << Limits::max();
    QTest::newRow("the lowest") << QVariant(-2'147'483'648LL) << Limits::min();
    QTest::newRow("one below") << QVariant(-2'147'483'649LL) << Limits::min();
    QTest::newRow("a text far above") << QVariant("99999999999999999999") << Limits::max();
}

void tst_Placement::numbersMayBeTextsAndEndAt32Bits() {
    QFETCH(const QVariant, stored);
    QFETCH(const qint32, number);

    const Placement placement =
        Placement::fromEntry(QVariantMap{{"universe", stored}, {"address", stored}, {"layer", stored}});
    QCOMPARE(placement.universe(), number);
    QCOMPARE(placement.address(), static_cast<std::uint32_t>(number));
    QCOMPARE(placement.layer(), static_cast<std::uint32_t>(number));
}

void tst_Placement::anUnchangedEntryIsWrittenAsItWasRead_data() {
    QTest::addColumn<QVariantMap>("entry");

    QTest::newRow("an empty one") << QVariantMap();
    QTest::newRow("numbers as texts") << QVariantMap{{"universe", "1"}, {"address", "017"}, {"layer", "x"}};
    QTest::newRow("numbers as reals") << QVariantMap{{"universe", 1.0}, {"address", 2.5}};
    QTest::newRow("numbers beyond 32 bits") << QVariantMap{{"universe", 1LL << 40}};
    QTest::newRow("wrong types") << QVariantMap{{"name", 7LL}, {"profiles", "Head"}, {"layer", true}};
    QTest::newRow("other keys") << QVariantMap{{"gel", 201LL}, {"window", QVariantList{1LL, 2.5}}};
}

void tst_Placement::anUnchangedEntryIsWrittenAsItWasRead() {
    QFETCH(const QVariantMap, entry);

    const QVariantMap written = Placement::fromEntry(entry).toEntry();
    QCOMPARE(written, entry);
    for (auto value = entry.begin(); value != entry.end(); ++value) {
        QCOMPARE(written.value(value.key()).typeId(), value->typeId());
    }
}

void tst_Placement::onlyWhatIsSetIsWrittenAnew_data() {
    QTest::addColumn<QVariantMap>("entry");
    QTest::addColumn<QVariantMap>("written");

    QTest::newRow("the rest stays")
        << QVariantMap{{"universe", "1"}, {"address", "2"}, {"layer", "3"}, {"gel", 201LL}}
        << QVariantMap{{"universe", "1"}, {"address", 17LL}, {"layer", "3"}, {"gel", 201LL}};
    QTest::newRow("a missing key comes")
        << QVariantMap{{"name", "Spot"}} << QVariantMap{{"name", "Spot"}, {"address", 17LL}};
    QTest::newRow("the same number becomes an integer")
        << QVariantMap{{"address", "17"}} << QVariantMap{{"address", 17LL}};
}

void tst_Placement::onlyWhatIsSetIsWrittenAnew() {
    QFETCH(const QVariantMap, entry);
    QFETCH(const QVariantMap, written);

    Placement placement = Placement::fromEntry(entry);
    placement.setAddress(17);
    QCOMPARE(placement.toEntry(), written);
    QCOMPARE(placement.toEntry().value("address").typeId(), int{QMetaType::LongLong});
    QCOMPARE(placement.toEntry().value("universe").typeId(), written.value("universe").typeId());
}

void tst_Placement::whatIsSetIsReadAgain() {
    const QVariantList profiles{QVariantMap{{"profile", "Head"}}};
    Placement placement;
    placement.setName("Spot");
    placement.setUniverse(-2);
    placement.setAddress(-1);
    placement.setLayer(4);
    placement.setProfiles(profiles);
    QCOMPARE(placement.toEntry(), (QVariantMap{{"name", "Spot"},
                                               {"universe", -2LL},
                                               {"address", -1LL},
                                               {"layer", 4LL},
                                               {"profiles", profiles}}));
    for (const Placement& read : {placement, Placement::fromEntry(placement.toEntry())}) {
        QCOMPARE(read.name(), QString("Spot"));
        QCOMPARE(read.universe(), -2);
        QCOMPARE(read.address(), 0xFFFFFFFFU);
        QCOMPARE(read.layer(), 4U);
        QCOMPARE(read.profiles(), profiles);
    }
}

void tst_Placement::aCopyIsChangedAlone() {
    const Placement placement = Placement::fromEntry(QVariantMap{{"universe", 1LL}});
    Placement copy = placement;
    copy.setUniverse(2);
    QCOMPARE(placement.universe(), 1);
    QCOMPARE(placement.toEntry(), (QVariantMap{{"universe", 1LL}}));
    QCOMPARE(copy.toEntry(), (QVariantMap{{"universe", 2LL}}));
}

QTEST_GUILESS_MAIN(tst_Placement)
#include "tst_Placement.moc"
