#include "rig/ProfileExpansion.h"

#include "rig/NameStack.h"
#include "rig/Profiles.h"
#include "support/StandardOutput.h"

#include <QTest>

namespace {

QVariantMap control(const QString& name) {
    return {{"name", name}};
}

QVariantMap nested(const QString& profile) {
    return {{"profile", profile}};
}

QVariantMap nested(const QString& profile, const QString& name) {
    return {{"profile", profile}, {"name", name}};
}

Profiles table(const QVariantMap& profiles) {
    Profiles result;
    result.setTable(profiles);
    return result;
}

QVariantList times(int count, const QVariantMap& entry) {
    QVariantList entries;
    entries.fill(entry, count);
    return entries;
}

// Ten profiles, each of them ten times the next one: ten thousand million controls.
QVariantMap bomb(const QVariantList& innermost) {
    QVariantMap profiles;
    for (int level = 0; level < 9; ++level) {
        profiles[QString::number(level)] = times(10, nested(QString::number(level + 1)));
    }
    profiles["9"] = innermost;
    return profiles;
}

/// Expands like a fixture view does, and keeps what it came to.
struct Expansion {
    NameStack names;
    QStringList keys;
    QByteArray output;
    ExpansionSize size;
    qsizetype characters = 0; ///< of all that the fixture would have to keep

    explicit Expansion(std::uint32_t layerNum = 0) {
        names.startWith("Wash");
        names.setLayerNum(layerNum);
    }

    void expand(const QVariantList& entries, const Profiles& profiles, ExpansionSize limit = largestRig) {
        const auto add = [this](const QVariantMap& entry) {
            if (entry.value("newlayer").toBool()) {
                names.setLayerNum(names.layerNum() + 1);
            }
            const QString name = entry.value(entry.contains("label") ? "label" : "name").toString();
            keys.append(names.key() + "." + names.resolvedName(name));
            characters += keys.last().size();
        };
        output = standardOutputOf([&] { size = expandProfile(entries, profiles, names, add, limit); });
    }
};

constexpr auto stopped = "Profile expansion stopped: it adds more than any fixture or rig has\n";

} // namespace

class tst_ProfileExpansion : public QObject {
    Q_OBJECT

private slots:
    void controlsComeInTheOrderOfTheirEntries();
    void aNestedProfileIsExpandedInItsPlace();
    void aNestedProfilesNameIsPartOfTheKey();
    void withoutANameANestedProfileAddsNothingToTheKey();
    void anEmptyNameIsAPartOfTheKeyToo();
    void profilesNestToAnyDepth();
    void theLayerNumberRunsOnThroughTheWholeExpansion();
    void theSameProfileMayStandSideBySide();
    void anUnknownProfileAddsNothing();
    void whatIsNoDictionaryAddsNothing();
    void aProfileThatIsNoTextAddsNothing();

    void aProfileThatContainsItselfAddsNothingTheSecondTime();
    void aRingOfProfilesAddsNothingTheSecondTime();
    void anInnerProfileThatContainsItselfIsNamedEachTime();

    void theLastEntryWithinTheLimitIsTaken();
    void beyondTheLimitTheExpansionStops();
    void nestedProfilesAreEntriesToo();
    void keysOfAnEndlessLengthStopTheExpansion();
    void aProfileThatUnfoldsWithoutEndStops_data();
    void aProfileThatUnfoldsWithoutEndStops();
};

void tst_ProfileExpansion::controlsComeInTheOrderOfTheirEntries() {
    Expansion wash;
    wash.expand({control("Pan"), control("Tilt"), control("Dimmer")}, {});
    QCOMPARE(wash.keys, QStringList({"Wash.Pan", "Wash.Tilt", "Wash.Dimmer"}));
    QCOMPARE(wash.output, "");
    QCOMPARE(wash.names.key(), "Wash");
}

void tst_ProfileExpansion::aNestedProfileIsExpandedInItsPlace() {
    Expansion wash;
    wash.expand({control("Dimmer"), nested("RGB"), control("Zoom")},
                table({{"RGB", QVariantList{control("Red"), control("Green"), control("Blue")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Dimmer", "Wash.Red", "Wash.Green", "Wash.Blue", "Wash.Zoom"}));
}

void tst_ProfileExpansion::aNestedProfilesNameIsPartOfTheKey() {
    Expansion wash(2);
    wash.expand({nested("RGB", "Cell #"), control("Zoom")}, table({{"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Cell 2.Red", "Wash.Zoom"}));
    QCOMPARE(wash.names.key(), "Wash");
}

void tst_ProfileExpansion::withoutANameANestedProfileAddsNothingToTheKey() {
    Expansion wash;
    QVariantMap numbered = nested("RGB");
    numbered["name"] = qlonglong{5};
    wash.expand({nested("RGB"), numbered}, table({{"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Red", "Wash.Red"}));
}

void tst_ProfileExpansion::anEmptyNameIsAPartOfTheKeyToo() {
    Expansion wash;
    wash.expand({nested("RGB", "")}, table({{"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList("Wash..Red"));
}

void tst_ProfileExpansion::profilesNestToAnyDepth() {
    QVariantMap profiles;
    constexpr int depth = 20'000;
    for (int level = 0; level < depth; ++level) {
        profiles[QString::number(level)] = QVariantList{nested(QString::number(level + 1))};
    }
    profiles[QString::number(depth)] = QVariantList{control("Red")};
    Expansion wash;
    wash.expand({nested("0", "Cell")}, table(profiles));
    QCOMPARE(wash.keys, QStringList("Wash.Cell.Red"));
}

void tst_ProfileExpansion::theLayerNumberRunsOnThroughTheWholeExpansion() {
    const QVariantMap raising{{"name", "Dimmer #"}, {"newlayer", true}};
    Expansion wash(1);
    wash.expand({control("Pan #"), nested("Cell", "Cell #"), nested("Cell", "Cell #"), control("Tilt #")},
                table({{"Cell", QVariantList{raising, control("Red #")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Pan 1", "Wash.Cell 1.Dimmer 2", "Wash.Cell 1.Red 2",
                                     "Wash.Cell 2.Dimmer 3", "Wash.Cell 2.Red 3", "Wash.Tilt 3"}));
    QCOMPARE(wash.names.layerNum(), 3U);
}

void tst_ProfileExpansion::theSameProfileMayStandSideBySide() {
    Expansion wash;
    wash.expand({nested("Row")}, table({{"Row", QVariantList{nested("RGB"), nested("RGB")}},
                                        {"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Red", "Wash.Red"}));
    QCOMPARE(wash.output, "");
}

void tst_ProfileExpansion::anUnknownProfileAddsNothing() {
    Expansion wash;
    wash.expand({nested("Fog", "Cell"), control("Pan")}, table({{"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList("Wash.Pan"));
    QCOMPARE(wash.output, "");
}

void tst_ProfileExpansion::whatIsNoDictionaryAddsNothing() {
    Expansion wash;
    wash.expand({"Pan", qlonglong{5}, QVariantList{control("Tilt")}, QVariant(), control("Pan")}, {});
    QCOMPARE(wash.keys, QStringList("Wash.Pan"));
}

void tst_ProfileExpansion::aProfileThatIsNoTextAddsNothing() {
    Expansion wash;
    const QVariantMap entry{{"profile", QVariantList{"RGB"}}, {"name", "Cell"}};
    wash.expand({entry, control("Pan")}, table({{"RGB", QVariantList{control("Red")}}}));
    QCOMPARE(wash.keys, QStringList("Wash.Pan"));
}

void tst_ProfileExpansion::aProfileThatContainsItselfAddsNothingTheSecondTime() {
    Expansion wash;
    wash.expand({nested("Row"), control("Zoom")},
                table({{"Row", QVariantList{control("Red"), nested("Row", "Cell"), control("Blue")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.Red", "Wash.Blue", "Wash.Zoom"}));
    QCOMPARE(wash.output, "Profile 'Row' contains itself!\n");
    QCOMPARE(wash.names.key(), "Wash");
}

void tst_ProfileExpansion::aRingOfProfilesAddsNothingTheSecondTime() {
    Expansion wash;
    wash.expand({nested("A", "a")}, table({{"A", QVariantList{control("1"), nested("B", "b")}},
                                           {"B", QVariantList{nested("C", "c"), control("2")}},
                                           {"C", QVariantList{nested("A", "d"), control("3")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.a.1", "Wash.a.b.c.3", "Wash.a.b.2"}));
    QCOMPARE(wash.output, "Profile 'A' contains itself!\n");
}

void tst_ProfileExpansion::anInnerProfileThatContainsItselfIsNamedEachTime() {
    Expansion wash;
    wash.expand({nested("A"), nested("A")}, table({{"A", QVariantList{nested("A"), control("1")}}}));
    QCOMPARE(wash.keys, QStringList({"Wash.1", "Wash.1"}));
    QCOMPARE(wash.output, "Profile 'A' contains itself!\nProfile 'A' contains itself!\n");
}

void tst_ProfileExpansion::theLastEntryWithinTheLimitIsTaken() {
    Expansion wash;
    wash.expand(times(5, control("Pan")), {}, {.entries = 5, .characters = 1000});
    QCOMPARE(wash.keys.size(), 5);
    QCOMPARE(wash.output, "");
}

void tst_ProfileExpansion::beyondTheLimitTheExpansionStops() {
    Expansion wash;
    wash.expand({nested("Row", "Cell"), control("Zoom")}, table({{"Row", times(5, control("Pan"))}}),
                {.entries = 5, .characters = 1000});
    QCOMPARE(wash.keys, QStringList(4, "Wash.Cell.Pan"));
    QCOMPARE(wash.output, stopped);
    QCOMPARE(wash.names.key(), "Wash");
}

void tst_ProfileExpansion::nestedProfilesAreEntriesToo() {
    Expansion wash;
    wash.expand(times(6, nested("Empty")), table({{"Empty", QVariantList()}}),
                {.entries = 5, .characters = 1000});
    QCOMPARE(wash.output, stopped);
}

void tst_ProfileExpansion::keysOfAnEndlessLengthStopTheExpansion() {
    Expansion wash;
    wash.expand({nested("Row", QString(1000, 'x'))}, table({{"Row", times(100, control("Pan"))}}),
                {.entries = 1000, .characters = 10'000});
    QVERIFY(wash.keys.size() >= 9 && wash.keys.size() <= 10);
    QCOMPARE(wash.output, stopped);
}

void tst_ProfileExpansion::aProfileThatUnfoldsWithoutEndStops_data() {
    QTest::addColumn<QVariantMap>("profiles");

    const QString longText(1'000'000, 'x');
    QTest::newRow("controls") << bomb(times(10, control("Pan")));
    QTest::newRow("nothing") << bomb({});
    QTest::newRow("unknown profiles") << bomb(times(10, nested("Fog")));
    QTest::newRow("names") << bomb(times(10, control("#" + longText)));
    QTest::newRow("labels") << bomb(times(10, QVariantMap{{"label", "#" + longText}}));
    QTest::newRow("names of profiles") << bomb(times(10, nested("Fog", "#" + longText)));
    QTest::newRow("a long name that contains itself") << [&] {
        QVariantMap profiles = bomb(times(10, nested(longText)));
        profiles[longText] = QVariantList{nested(longText)};
        return profiles;
    }();
}

void tst_ProfileExpansion::aProfileThatUnfoldsWithoutEndStops() {
    QFETCH(const QVariantMap, profiles);
    Expansion wash;
    wash.expand({nested("0")}, table(profiles));
    QVERIFY(wash.output.endsWith(stopped));
    QVERIFY(wash.output.size() < 100'000'000);
    QVERIFY(wash.characters < 200'000'000);
    QVERIFY(wash.keys.size() <= 524'288);
    QCOMPARE(wash.names.key(), "Wash");
}

QTEST_APPLESS_MAIN(tst_ProfileExpansion)
#include "tst_ProfileExpansion.moc"
