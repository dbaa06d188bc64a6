#include "AcmeHead.h"

#include "adding/FixtureCommands.h"
#include "settings/Settings.h"
#include "support/TestRig.h"
#include "window/MainWindow.h"
#include "window/Sheets.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A console with the fixtures Spot and Wash, of a fader each, and the definition of Acme Head in a file.
class tst_FixtureCommands : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aChosenFixtureIsAdded();
    void anImportBringsAllModesAndIsAStepToUndo();
    void whatAnImportLosesIsReported();
    void aFileThatIsNoFixtureIsRefused();
    void anImportThatWouldChangeFixturesOfTheRigIsRefused();
    void aYesRemovesTheFixtures();
    void aNoRemovesNothing();
    void aSecondSheetIsNotOpenedBesideTheFirst();

private:
    QDialog& sheet();
    void press(const QString& button);
    void import(const QString& path);
    QStringList sheetTexts();
    QStringList fixtures() const;

    QTemporaryDir folder_;
    std::unique_ptr<TestRig> rig_;
    Settings settings_;
    QStandardItemModel table_;
    std::unique_ptr<Patching> patching_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<FixtureCommands> commands_;
};

void tst_FixtureCommands::init() {
    writeAcmeHead(folder_.filePath("head.qxf"));
    rig_ = std::make_unique<TestRig>();
    rig_->profiles().setTable(QVariantMap{{"Dimmer", QVariantList{controlEntry("Level")}}});
    const QVariantList views{placement("Spot", 1, 1, {QVariantMap{{"profile", "Dimmer"}}}),
                             placement("Wash", 1, 2, {QVariantMap{{"profile", "Dimmer"}}})};
    settings_ = Settings(QVariantMap{{"views", views}});
    table_.clear();
    table_.appendRow(new QStandardItem("Spot")); // which the table owns
    table_.appendRow(new QStandardItem("Wash"));
    rig_->fixtures().replaceAll(views);
    patching_ = std::make_unique<Patching>(settings_, rig_->profiles(), rig_->fixtures(), rig_->places());
    window_ = std::make_unique<MainWindow>(rig_->places());
    window_->show();
    commands_ = std::make_unique<FixtureCommands>(*window_, rig_->profiles(), settings_, *patching_);
}

void tst_FixtureCommands::cleanup() {
    commands_.reset();
    window_.reset();
    patching_.reset();
    rig_.reset();
}

QDialog& tst_FixtureCommands::sheet() {
    QDialog* const open = raiseOpenSheet(*window_);
    if (!open) {
        qFatal("no sheet is open");
    }
    return *open;
}

void tst_FixtureCommands::press(const QString& button) {
    for (QPushButton* const candidate : sheet().findChildren<QPushButton*>()) {
        if (candidate->text().remove('&') == button) {
            return QTest::mouseClick(candidate, Qt::LeftButton);
        }
    }
    QFAIL(qPrintable("there is no button " + button));
}

void tst_FixtureCommands::import(const QString& path) {
    emit window_->importFixtureChosen();
    static_cast<QFileDialog&>(sheet()).selectFile(path);
    press("Open");
}

// The lines of the sheet, and what stands in its field of many lines.
QStringList tst_FixtureCommands::sheetTexts() {
    QStringList texts;
    for (const QLabel* label : sheet().findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    texts.removeAll(QString());
    for (const QPlainTextEdit* field : sheet().findChildren<QPlainTextEdit*>()) {
        texts += field->toPlainText().split('\n');
    }
    return texts;
}

QStringList tst_FixtureCommands::fixtures() const {
    QStringList names;
    for (const auto& fixture : rig_->fixtures().rows()) {
        names.append(fixture->name());
    }
    return names;
}

void tst_FixtureCommands::aChosenFixtureIsAdded() {
    emit window_->addFixtureChosen();
    press("Add");
    QCOMPARE(fixtures(), (QStringList{"Spot", "Wash", "Dimmer"}));
    QCOMPARE(patching_->history().undoText(), QString("Add Dimmer"));
}

void tst_FixtureCommands::anImportBringsAllModesAndIsAStepToUndo() {
    import(folder_.filePath("head.qxf"));
    QCOMPARE(sheetTexts(), (QStringList{"Acme Head was imported", "Add Fixture lists it now:",
                                        "Acme Head - Long (3 channels)", "Acme Head - Short (1 channel)"}));
    QCOMPARE(settings_.userProfiles().keys(), (QStringList{"Acme Head - Long", "Acme Head - Short"}));
    patching_->history().undo();
    QCOMPARE(settings_.userProfiles().keys(), QStringList());
}

void tst_FixtureCommands::whatAnImportLosesIsReported() {
    import(QFINDTESTDATA("../library/ofl/meaning-that-changes.json"));
    QCOMPARE(sheetTexts().mid(2),
             (QStringList{
                 "acme Lamp - M (2 channels)",
                 "    'Speed or level' is 'Speed' or 'Level', as the level of 'Mode' has it; its fader is "
                 "called 'Speed or level' all the time and rests at 0",
                 "acme Lamp - Plain (2 channels)"}));
}

void tst_FixtureCommands::aFileThatIsNoFixtureIsRefused() {
    const QString path = folder_.filePath("notes.qxf");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("remember the milk");
    file.close();
    import(path);
    QCOMPARE(sheetTexts().first(2), (QStringList{"The fixture was not imported", "notes.qxf"}));
    QCOMPARE(patching_->history().count(), 0);
}

void tst_FixtureCommands::anImportThatWouldChangeFixturesOfTheRigIsRefused() {
    patching_->addFixtures(
        {.placements = {placement("Head", 1, 3, {QVariantMap{{"profile", "Acme Head - Short"}}})},
         .profiles = {{"Acme Head - Short", QVariantList{controlEntry("Shutter")}}}});
    import(folder_.filePath("head.qxf"));
    QCOMPARE(sheetTexts(), (QStringList{"The fixture was not imported", "head.qxf",
                                        "Fixtures of this rig use another profile “Acme Head - Short”."}));
    QCOMPARE(settings_.userProfiles().keys(), QStringList{"Acme Head - Short"});
    QCOMPARE(patching_->history().count(), 1);
}

void tst_FixtureCommands::aYesRemovesTheFixtures() {
    emit window_->removeFixturesChosen({table_.index(1, 0), table_.index(0, 0)});
    QCOMPARE(sheetTexts(), (QStringList{"Remove 2 fixtures?", "Spot", "Wash", "Cues keep their records."}));
    press("Remove");
    QCOMPARE(fixtures(), QStringList());
    patching_->history().undo();
    QCOMPARE(fixtures(), (QStringList{"Spot", "Wash"}));
}

void tst_FixtureCommands::aNoRemovesNothing() {
    emit window_->removeFixturesChosen({table_.index(1, 0)});
    press("Cancel");
    QCOMPARE(fixtures(), (QStringList{"Spot", "Wash"}));
}

void tst_FixtureCommands::aSecondSheetIsNotOpenedBesideTheFirst() {
    emit window_->removeFixturesChosen({table_.index(1, 0)});
    const QDialog* const first = &sheet();
    emit window_->addFixtureChosen();
    emit window_->importFixtureChosen();
    QCOMPARE(window_->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
    QCOMPARE(&sheet(), first);
}

QTEST_MAIN(tst_FixtureCommands)
#include "tst_FixtureCommands.moc"
