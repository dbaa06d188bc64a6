#include "TestConsole.h"

#include "rig/DMXControl.h"
#include "settings/RecoveryFile.h"
#include "settings/SettingsFile.h"
#include "settings/UserDefaults.h"
#include "support/TestRig.h"
#include "window/RecoveryNotice.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QTest>

namespace {

QVariantMap rigOf(const QString& fixture) {
    return {{"views", QVariantList{placement(fixture, 1, 1, {controlEntry("Red"), controlEntry("Blue")})}}};
}

RecoveryFile recoveryFile() {
    return {RecoveryFile::defaultPath(), SettingsFile::defaultPath()};
}

bool hasRecoveryFile() {
    return QFileInfo::exists(RecoveryFile::defaultPath());
}

} // namespace

/// What a console does with the show that a run left which did not reach its end.
class tst_Recovery : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theShowOfTheEndedRunIsTakenInPlaceOfTheSavedOne();
    void theCurrentCueIsCheckedAndNotExecuted();
    void aLineInTheMainWindowSaysSoUntilItIsAnswered();
    void keepingItLeavesEverythingAsItIs();
    void goingBackBringsTheSavedRigAndKeepsTheFile();
    void afterOtherSettingsCameTheyHold();
    void quittingSavesTheShowAndRemovesTheFile();
    void aShowThatCannotBeSavedStaysInTheFile();
    void levelsThatCannotBeSavedStayInTheFileThoughTheSettingsAreSaved();
    void whatTheOperatorChangesIsKeptWithinTwoSeconds_data();
    void whatTheOperatorChangesIsKeptWithinTwoSeconds();

private:
    TestConsole& start() {
        console_ = std::make_unique<TestConsole>(*home_);
        console_->start();
        return *console_;
    }
    /// As a run leaves it that was killed: other levels, cues and patch than are saved.
    static void leaveShow() {
        QVariantMap rig = rigOf("Left");
        rig.insert("cues", QVariantMap{{"1", QVariantList()}, {"2.5", QVariantList()}});
        QVERIFY(recoveryFile().write({.settings = rig,
                                      .configName = "Tour",
                                      .currCue = "2.5",
                                      .levels = {{.key = "Left.Blue", .value = 200}}}));
    }
    RecoveryNotice* notice() { return console_->window().findChild<RecoveryNotice*>(); }
    void answer(const QString& button) {
        for (auto* candidate : notice()->findChildren<QAbstractButton*>()) {
            if (candidate->text() == button) {
                candidate->click();
                QTRY_VERIFY(!notice());
                return;
            }
        }
        QFAIL("no such button");
    }

    std::unique_ptr<ScratchHome> home_;
    std::unique_ptr<TestConsole> console_;
};

void tst_Recovery::init() {
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({});
    home_->writeConfigurations({{"Stage", rigOf("Saved")}, {"Tour", rigOf("Truss")}});
    home_->writeSettings(rigOf("Saved"));
    home_->writeUserDefaults(
        {{"configName", "Stage"},
         {"saved_state: Stage",
          QVariantList{QVariantMap{{"key", "Saved.Red"}, {"value", 7LL}, {"time", 0LL}}}}});
}

void tst_Recovery::cleanup() {
    console_.reset();
    home_.reset();
}

void tst_Recovery::theShowOfTheEndedRunIsTakenInPlaceOfTheSavedOne() {
    leaveShow();
    start();
    QCOMPARE(console_->fixtures(), QStringList{"Left Univ: 1 Addr: 1"});
    QCOMPARE(console_->control("Left.Blue").value(), 200U);
    QCOMPARE(console_->control("Left.Red").value(), 0U);
    QCOMPARE(console_->configurations(), (QStringList{"Stage", "Tour *"}));
}

void tst_Recovery::theCurrentCueIsCheckedAndNotExecuted() {
    leaveShow();
    start();
    QCOMPARE(console_->cues(), (QStringList{"1", "2.5 *"}));
    QCOMPARE(console_->control("Left.Blue").value(), 200U); // the cue would bring it to 0
}

void tst_Recovery::aLineInTheMainWindowSaysSoUntilItIsAnswered() {
    start();
    QVERIFY(!notice());
    console_.reset();
    leaveShow();
    start();
    QVERIFY(notice());
    QVERIFY(notice()->isVisible());
    QVERIFY(!console_->sheet());
}

void tst_Recovery::keepingItLeavesEverythingAsItIs() {
    leaveShow();
    start();
    answer("&Keep Them");
    QCOMPARE(console_->fixtures(), QStringList{"Left Univ: 1 Addr: 1"});
    QCOMPARE(console_->control("Left.Blue").value(), 200U);
    QVERIFY(hasRecoveryFile());
}

void tst_Recovery::goingBackBringsTheSavedRigAndKeepsTheFile() {
    leaveShow();
    start();
    answer("Go &Back to Saved Rig");
    QCOMPARE(console_->fixtures(), QStringList{"Saved Univ: 1 Addr: 1"});
    QCOMPARE(console_->control("Saved.Red").value(), 7U);
    QCOMPARE(console_->cues(), QStringList());
    const QFileInfo recovery(RecoveryFile::defaultPath());
    const QStringList kept = recovery.dir().entryList({recovery.fileName() + ".kept-*"});
    QCOMPARE(kept.size(), 1);
    console_->quit();
    QCOMPARE(home_->settings(), std::optional(rigOf("Saved")));
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Stage"));
}

void tst_Recovery::afterOtherSettingsCameTheyHold() {
    leaveShow();
    home_->writeSettings(rigOf("Copied over"));
    start();
    QCOMPARE(console_->fixtures(), QStringList{"Copied over Univ: 1 Addr: 1"});
    QVERIFY(!notice());
    QVERIFY(!hasRecoveryFile());
}

void tst_Recovery::quittingSavesTheShowAndRemovesTheFile() {
    leaveShow();
    start();
    console_->quit();
    QVERIFY(!hasRecoveryFile());
    QCOMPARE(home_->settings()->value("cues").toMap().keys(), (QStringList{"1", "2.5"}));
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Tour"));
    QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList().size(), 1);
    console_.reset();
    start();
    QVERIFY(!notice());
    QCOMPARE(console_->control("Left.Blue").value(), 200U);
}

void tst_Recovery::aShowThatCannotBeSavedStaysInTheFile() {
    start();
    console_->control("Saved.Blue").setValue(9);
    const QString settings = SettingsFile::defaultPath();
    QVERIFY(QFile::rename(settings, settings + ".away"));
    QVERIFY(QDir().mkdir(settings)); // a folder in its place
    console_->quit();
    console_.reset();
    QVERIFY(hasRecoveryFile());
    QVERIFY(QDir().rmdir(settings));
    QVERIFY(QFile::rename(settings + ".away", settings));
    start();
    QVERIFY(notice());
    QCOMPARE(console_->control("Saved.Blue").value(), 9U);
}

void tst_Recovery::levelsThatCannotBeSavedStayInTheFileThoughTheSettingsAreSaved() {
    start();
    console_->newCue("7");
    console_->control("Saved.Blue").setValue(9);
    const QString defaults = UserDefaults::defaultPath();
    QFile::remove(defaults);
    QVERIFY(QDir().mkdir(defaults)); // a folder in its place
    console_->quit();
    console_.reset();
    QVERIFY(home_->settings()->value("cues").toMap().contains("7"));
    QVERIFY(hasRecoveryFile());
    start();
    QVERIFY(notice());
    QCOMPARE(console_->control("Saved.Blue").value(), 9U);
}

void tst_Recovery::whatTheOperatorChangesIsKeptWithinTwoSeconds_data() {
    QTest::addColumn<std::function<void(TestConsole&)>>("change");
    QTest::addColumn<std::function<bool(const ShowSnapshot&)>>("isKept");

    const auto row = [](const char* name, const std::function<void(TestConsole&)>& change,
                        const std::function<bool(const ShowSnapshot&)>& isKept) {
        QTest::newRow(name) << change << isKept;
    };
    row(
        "a level",
        [](TestConsole& console) {
            console.control("Saved.Blue").setValue(33);
            console.tick();
        },
        [](const ShowSnapshot& show) { return show.levels.size() == 2 && show.levels.at(0).value == 33; });
    row(
        "a new cue", [](TestConsole& console) { console.newCue("4"); },
        [](const ShowSnapshot& show) {
            return show.currCue == "4" && show.settings->value("cues").toMap().contains("4");
        });
    row(
        "another rig", [](TestConsole& console) { console.loadConfiguration("Tour", 2); },
        [](const ShowSnapshot& show) { return show.configName == "Tour"; });
}

void tst_Recovery::whatTheOperatorChangesIsKeptWithinTwoSeconds() {
    QFETCH(const std::function<void(TestConsole&)>, change);
    QFETCH(const std::function<bool(const ShowSnapshot&)>, isKept);
    start();
    change(*console_);
    QTRY_VERIFY(hasRecoveryFile());
    QTRY_VERIFY(isKept(recoveryFile().takeUp().value()));
}

QTEST_MAIN(tst_Recovery)
#include "tst_Recovery.moc"
