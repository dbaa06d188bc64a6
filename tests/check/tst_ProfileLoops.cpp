#include "check/ProfileLoops.h"

#include <QTest>

namespace {

/// A profile of so many nested ones, after a control of its own.
QVariantList profileOf(const QStringList& nested) {
    QVariantList entries{QVariantMap{{"name", "Dimmer"}}};
    for (const QString& profile : nested) {
        entries.append(QVariantMap{{"profile", profile}});
    }
    return entries;
}

// "A2 B1": from A by its second entry, from there by B's first.
QStringList texts(const std::vector<std::vector<LoopMember>>& loops) {
    QStringList result;
    for (const std::vector<LoopMember>& loop : loops) {
        QStringList members;
        for (const LoopMember& member : loop) {
            members.append(member.profile + QString::number(member.entry + 1));
        }
        result.append(members.join(' '));
    }
    return result;
}

} // namespace

class tst_ProfileLoops : public QObject {
    Q_OBJECT

private slots:
    void profilesThatContainThemselvesAreFound_data();
    void profilesThatContainThemselvesAreFound();
    void ofATableOfNothingButLoopsSomeAreFound();
};

void tst_ProfileLoops::profilesThatContainThemselvesAreFound_data() {
    QTest::addColumn<QVariantMap>("table");
    QTest::addColumn<QStringList>("loops");

    QTest::newRow("no profile") << QVariantMap{} << QStringList{};
    QTest::newRow("itself") << QVariantMap{{"A", profileOf({"A"})}} << QStringList{"A2"};
    QTest::newRow("itself twice") << QVariantMap{{"A", profileOf({"A", "A"})}} << QStringList{"A2", "A3"};
    QTest::newRow("by another") << QVariantMap{{"A", profileOf({"B"})}, {"B", profileOf({"A"})}}
                                << QStringList{"A2 B2"};
    QTest::newRow("behind a way in") << QVariantMap{{"A", profileOf({"B"})},
                                                    {"B", profileOf({"C"})},
                                                    {"C", profileOf({"B"})}}
                                     << QStringList{"B2 C2"};
    QTest::newRow("the same one twice is no loop")
        << QVariantMap{{"A", profileOf({"B", "B", "C"})}, {"B", profileOf({"C"})}, {"C", profileOf({})}}
        << QStringList{};
    QTest::newRow("two loops") << QVariantMap{{"A", profileOf({"B", "C"})},
                                              {"B", profileOf({"A"})},
                                              {"C", profileOf({"A"})}}
                               << QStringList{"A2 B2", "A3 C2"};
    QTest::newRow("what does not exist") << QVariantMap{{"A", profileOf({"X"})}} << QStringList{};
    QTest::newRow("what is no profile")
        << QVariantMap{{"A", "A"}, {"B", QVariantList{"B", 5}}} << QStringList{};
}

void tst_ProfileLoops::profilesThatContainThemselvesAreFound() {
    QFETCH(const QVariantMap, table);
    QFETCH(const QStringList, loops);
    QCOMPARE(texts(profileLoops(table)), loops);
}

// Each profile leads to the next and back to the first: 20,000 loops of 10,000 members on the average.
void tst_ProfileLoops::ofATableOfNothingButLoopsSomeAreFound() {
    constexpr int count = 20'000;
    QVariantMap table;
    for (int level = 0; level < count; ++level) {
        table.insert(QString::number(100'000 + level),
                     profileOf({QString::number(100'001 + level), "100000"}));
    }
    QCOMPARE(profileLoops(table).size(), std::size_t{100});
}

QTEST_APPLESS_MAIN(tst_ProfileLoops)
#include "tst_ProfileLoops.moc"
