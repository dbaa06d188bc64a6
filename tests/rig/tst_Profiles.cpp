#include "rig/Profiles.h"

#include "support/StandardOutput.h"

#include <QTest>

namespace {

const QVariantList pan{QVariantMap{{"name", "Pan"}}};
const QVariantList tilt{QVariantMap{{"name", "Tilt"}}};

} // namespace

class tst_Profiles : public QObject {
    Q_OBJECT

private slots:
    void aProfileIsFoundByItsName();
    void anUnknownProfileHasNoEntries();
    void whatIsNoArrayHasNoEntries_data();
    void whatIsNoArrayHasNoEntries();
    void withoutATableNothingIsFound();
    void aRigsOwnProfileIsAddedAndNamed();
    void aRigsOwnProfileReplacesOneOfTheSameName();
    void theRigsProfilesAreNamedWithoutATableToo();
};

void tst_Profiles::aProfileIsFoundByItsName() {
    Profiles profiles;
    profiles.setTable(QVariantMap{{"Spot", pan}, {"Wash", tilt}});
    QCOMPARE(profiles.profileWithName("Spot"), pan);
    QCOMPARE(profiles.profileWithName("Wash"), tilt);
}

void tst_Profiles::anUnknownProfileHasNoEntries() {
    Profiles profiles;
    profiles.setTable(QVariantMap{{"Spot", pan}});
    QVERIFY(profiles.profileWithName("spot").isEmpty());
    QVERIFY(profiles.profileWithName("").isEmpty());
    QVERIFY(profiles.profileWithName(QString()).isEmpty());
}

void tst_Profiles::whatIsNoArrayHasNoEntries_data() {
    QTest::addColumn<QVariant>("value");
    QTest::newRow("a string") << QVariant("Pan");
    QTest::newRow("a number") << QVariant(qlonglong{5});
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"name", "Pan"}});
    QTest::newRow("data") << QVariant(QByteArray("Pan"));
}

void tst_Profiles::whatIsNoArrayHasNoEntries() {
    QFETCH(const QVariant, value);
    Profiles profiles;
    profiles.setTable(QVariantMap{{"Spot", value}});
    QVERIFY(profiles.profileWithName("Spot").isEmpty());
}

void tst_Profiles::withoutATableNothingIsFound() {
    Profiles profiles;
    QVERIFY(profiles.profileWithName("Spot").isEmpty());
    profiles.setTable(std::nullopt);
    QVERIFY(profiles.profileWithName("Spot").isEmpty());
}

void tst_Profiles::aRigsOwnProfileIsAddedAndNamed() {
    Profiles profiles;
    profiles.setTable(QVariantMap{{"Spot", pan}});
    const QByteArray output = standardOutputOf([&] {
        profiles.addUserProfiles({{"Fog", tilt}, {"Haze", tilt}});
    });
    QCOMPARE(output, "Adding user profile: 'Fog'\nAdding user profile: 'Haze'\n");
    QCOMPARE(profiles.profileWithName("Fog"), tilt);
    QCOMPARE(profiles.profileWithName("Spot"), pan);
}

void tst_Profiles::aRigsOwnProfileReplacesOneOfTheSameName() {
    Profiles profiles;
    profiles.setTable(QVariantMap{{"Spot", pan}});
    standardOutputOf([&] { profiles.addUserProfiles({{"Spot", tilt}}); });
    QCOMPARE(profiles.profileWithName("Spot"), tilt);
}

void tst_Profiles::theRigsProfilesAreNamedWithoutATableToo() {
    Profiles profiles;
    QCOMPARE(standardOutputOf([&] {
                 profiles.addUserProfiles({{"Fog", tilt}});
             }),
             "Adding user profile: 'Fog'\n");
    QVERIFY(profiles.profileWithName("Fog").isEmpty());
}

QTEST_APPLESS_MAIN(tst_Profiles)
#include "tst_Profiles.moc"
