#include "adding/ProfileUse.h"

#include "rig/Profiles.h"
#include "settings/Settings.h"

#include <QTest>

namespace {

QVariantList control(const QString& name) {
    return {QVariantMap{{"name", name}}};
}

QVariantList nested(const QString& profile) {
    return {QVariantMap{{"profile", profile}}};
}

} // namespace

/// A table with Par, and Bar, which is made of Cell.
class tst_ProfileUse : public QObject {
    Q_OBJECT

private slots:
    void init();

    void nestedProfilesAreFound();
    void profilesThatContainEachOtherAreFoundOnce();
    void whatShipsStaysWhereItIs();
    void whatAnotherRigLeftComesAlongWithWhatItIsMadeOf();
    void whatTheRigHasIsNotTakenTwice();
    void aProfileThatFixturesUseInAnotherFormIsContested();

private:
    Profiles profiles_;
};

void tst_ProfileUse::init() {
    profiles_ = Profiles();
    profiles_.setTable(
        QVariantMap{{"Par", control("Level")}, {"Bar", nested("Cell")}, {"Cell", control("Red")}});
}

void tst_ProfileUse::nestedProfilesAreFound() {
    QCOMPARE(profilesIn(nested("Bar"), profiles_), (QSet<QString>{"Bar", "Cell"}));
    QCOMPARE(profilesIn(control("Level"), profiles_), QSet<QString>());
    QCOMPARE(profilesIn({"text", 7}, profiles_), QSet<QString>());
}

void tst_ProfileUse::profilesThatContainEachOtherAreFoundOnce() {
    profiles_.setProfile("Cell", nested("Bar"));
    QCOMPARE(profilesIn(nested("Bar"), profiles_), (QSet<QString>{"Bar", "Cell"}));
}

void tst_ProfileUse::whatShipsStaysWhereItIs() {
    QCOMPARE(profilesToTakeAlong("Bar", profiles_, Settings()), QVariantMap());
    QCOMPARE(profilesToTakeAlong("nobody's", profiles_, Settings()), QVariantMap());
}

void tst_ProfileUse::whatAnotherRigLeftComesAlongWithWhatItIsMadeOf() {
    profiles_.setProfile("Cell", control("Own"));
    profiles_.setProfile("Ring", nested("Cell"));
    QCOMPARE(profilesToTakeAlong("Ring", profiles_, Settings()),
             (QVariantMap{{"Cell", control("Own")}, {"Ring", nested("Cell")}}));
}

void tst_ProfileUse::whatTheRigHasIsNotTakenTwice() {
    profiles_.setProfile("Ring", control("Own"));
    const Settings settings(QVariantMap{{"profiles", QVariantMap{{"Ring", control("Own")}}}});
    QCOMPARE(profilesToTakeAlong("Ring", profiles_, settings), QVariantMap());
}

void tst_ProfileUse::aProfileThatFixturesUseInAnotherFormIsContested() {
    const Settings bars(QVariantMap{{"views", QVariantList{QVariantMap{{"profiles", nested("Bar")}}}}});
    QCOMPARE(contestedProfile({{"Cell", control("Green")}}, profiles_, bars), QString("Cell"));
    QCOMPARE(contestedProfile({{"Cell", control("Red")}}, profiles_, bars), QString());
    QCOMPARE(contestedProfile({{"Par", control("Green")}}, profiles_, bars), QString());
    QCOMPARE(contestedProfile({{"New", control("Green")}}, profiles_, bars), QString());
}

QTEST_APPLESS_MAIN(tst_ProfileUse)
#include "tst_ProfileUse.moc"
