#include "check/RigListing.h"

#include "rig/Profiles.h"

#include <QTest>

namespace {

QVariantMap placement(const QString& name, const QVariant& universe, const QVariant& address,
                      const QVariantList& profiles) {
    return {{"name", name}, {"universe", universe}, {"address", address}, {"profiles", profiles}};
}

QVariantMap nested(const QString& profile) {
    return {{"profile", profile}};
}

} // namespace

class tst_RigListing : public QObject {
    Q_OBJECT

private slots:
    void anEmptyRigIsTwoHeadings();
    void fixturesStandInTheOrderOfTheirWindows();
    void cuesStandInTheirOrder();
};

void tst_RigListing::anEmptyRigIsTwoHeadings() {
    const QStringList expected{"Fixture  Universe  Address  Slots  Faders  Profile", "",
                               "Cue  Faders  Longest fade"};
    QCOMPARE(rigListing({}, {}), expected);
}

void tst_RigListing::fixturesStandInTheOrderOfTheirWindows() {
    Profiles profiles;
    profiles.setTable(QVariantMap{
        {"Head", QVariantList{QVariantMap{{"label", "Head"}}, QVariantMap{{"name", "Pan"}, {"channels", 2}},
                              QVariantMap{{"blank", 3}}, QVariantMap{{"name", "Level"}}}}});
    const QVariantMap dimmer{{"name", "Dimmer"}};
    const QVariantMap rig{
        {"views",
         QVariantList{placement("Wash", -1, "101", {nested("Head"), nested("Head")}),
                      placement("A\tvery long name", 2, 0, {dimmer}), placement("", 2, -5, {dimmer}),
                      placement("Mix", 3, 512, {nested("Head"), dimmer}), placement("None", 3, 7, {})}}};
    const QStringList expected{
        "Fixture           Universe  Address  Slots    Faders  Profile",
        "Wash              -1        101      101-112  4       Head",
        QString("A\ufffdvery long name  2         0        1        1       (own faders)"),
        "                  2         -5       1        1       (own faders)",
        "Mix               3         512      512-518  3       Head, (own faders)",
        "None              3         7        -        0"};
    QCOMPARE(rigListing(rig, profiles).first(6), expected);
}

void tst_RigListing::cuesStandInTheirOrder() {
    const QVariantMap quick{{"key", "A"}, {"value", 1}, {"time", 0}};
    const QVariantMap slow{{"key", "B"}, {"value", 1}, {"time", 2.5}};
    const QVariantMap rig{{"cues", QVariantMap{{"10", QVariantList{quick, slow}},
                                               {"2", QVariantList{quick}},
                                               {"2.5", "cue data goes here"},
                                               {"3", QVariantList{}}}}};
    const QStringList expected{"Cue  Faders  Longest fade", "2    1       0 s", "2.5  -       never stored",
                               "3    0       0 s", "10   2       2.5 s"};
    QCOMPARE(rigListing(rig, {}).sliced(2), expected);
}

QTEST_APPLESS_MAIN(tst_RigListing)
#include "tst_RigListing.moc"
