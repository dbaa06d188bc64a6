#include "AcmeHead.h"

#include "adding/AddFixtureSheet.h"
#include "adding/FixtureChoices.h"
#include "library/FixtureLibrary.h"
#include "settings/Settings.h"
#include "support/TestRig.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

#include <memory>

namespace {

enum Number { Universe, Address, Layer, Copies };

} // namespace

/// A console with the profiles Par of 5 slots and Dimmer of one, a fixture Par in universe 1 at 1, and a
/// library of one fixture, Acme Head, with a mode Long of 3 slots and a mode Short.
class tst_AddFixtureSheet : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void profilesAreListedWithTheirChannels();
    void theFirstIsChosenAndPlaced();
    void typedWordsSearchTheList();
    void keysOfTheSearchWalkTheList();
    void anImportedProfileSuggestsItsModel();
    void theControlsAreShownWithTheirSlots();
    void theFirstGapOfTheUniverseIsSuggested();
    void anOwnAddressStays();
    void anOwnNameStaysUntilItIsTakenAway();
    void copiesStandOneAfterTheOther();
    void whatRunsPastTheUniverseCannotBeAdded();
    void slotsOfOthersAreToldAndCanBeShared();
    void whileNothingIsChosenNothingCanBeAdded();
    void aChangeOfThePatchIsFollowed();
    void aProfileThatIsGoneCannotBeAdded();
    void theLibraryIsListedWhenItHasBeenLookedThrough();
    void aModeOfTheLibraryComesWithItsProfile();
    void returnAddsAndEscapeDoesNot();

private:
    void open();
    void search(const QString& words) { QTest::keyClicks(words_, words); }
    void set(Number number, int value) { numbers_.at(number)->setValue(value); }
    int number(Number number) const { return numbers_.at(number)->value(); }
    QStringList listed() const;
    QString note() const;
    bool canBeAdded() const;
    QStringList names() const;

    std::unique_ptr<TestRig> rig_;
    Settings settings_;
    QTemporaryDir folder_;
    std::unique_ptr<Patching> patching_;
    std::unique_ptr<FixtureLibrary> library_;
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<AddFixtureSheet> sheet_;
    QLineEdit* words_ = nullptr;
    QTreeView* list_ = nullptr;
    QList<QSpinBox*> numbers_;
};

void tst_AddFixtureSheet::init() {
    rig_ = std::make_unique<TestRig>();
    rig_->profiles().setTable(QVariantMap{
        {"Dimmer", QVariantList{controlEntry("Level")}},
        {"Par", QVariantList{controlEntry("Red"), QVariantMap{{"name", "Fine"}, {"channels", 2LL}},
                             QVariantMap{{"blank", 2LL}}}}});
    const QVariantList views{placement("Par", 1, 1, {QVariantMap{{"profile", "Par"}}})};
    settings_ = Settings(QVariantMap{{"views", views}});
    writeAcmeHead(folder_.filePath("head.qxf"));
    rig_->fixtures().replaceAll(views);
    patching_ = std::make_unique<Patching>(settings_, rig_->profiles(), rig_->fixtures(), rig_->places());
    library_ = std::make_unique<FixtureLibrary>(folder_.path());
    window_ = std::make_unique<QWidget>();
    open();
}

void tst_AddFixtureSheet::cleanup() {
    sheet_.reset();
    window_.reset();
    library_.reset();
    patching_.reset();
    rig_.reset();
}

void tst_AddFixtureSheet::open() {
    sheet_ = std::make_unique<AddFixtureSheet>(*window_, FixtureSources{.profiles = rig_->profiles(),
                                                                        .settings = settings_,
                                                                        .library = *library_,
                                                                        .patching = *patching_});
    sheet_->show();
    sheet_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(sheet_.get()));
    for (QLineEdit* const field : sheet_->findChildren<QLineEdit*>()) {
        if (field->accessibleName() == "Search") {
            words_ = field;
        }
    }
    list_ = sheet_->findChild<QTreeView*>("fixtures");
    numbers_ = sheet_->findChildren<QSpinBox*>();
    QCOMPARE(numbers_.size(), 4);
}

QStringList tst_AddFixtureSheet::listed() const {
    QStringList rows;
    const QAbstractItemModel& model = *list_->model();
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            cells.append(model.index(row, column).data().toString());
        }
        rows.append(cells.join(", "));
    }
    return rows;
}

QString tst_AddFixtureSheet::note() const {
    return sheet_->findChild<QLabel*>("note")->text();
}

bool tst_AddFixtureSheet::canBeAdded() const {
    for (const QPushButton* button : sheet_->findChildren<QPushButton*>()) {
        if (button->text() == "Add") {
            return button->isEnabled();
        }
    }
    qFatal("no button to add");
}

QStringList tst_AddFixtureSheet::names() const {
    QStringList names;
    for (const QVariant& placement : sheet_->newFixtures().placements) {
        names.append(placement.toMap().value("name").toString());
    }
    return names;
}

void tst_AddFixtureSheet::profilesAreListedWithTheirChannels() {
    QCOMPARE(listed(), (QStringList{"Dimmer, 1, Console", "Par, 5, Console"}));
}

void tst_AddFixtureSheet::theFirstIsChosenAndPlaced() {
    QVERIFY(words_->hasFocus());
    QCOMPARE(sheet_->newFixtures().placements,
             QVariantList{placement("Dimmer", 1, 6, {QVariantMap{{"profile", "Dimmer"}}})});
    QCOMPARE(note(), QString("Dimmer: slot 6 of universe 1."));
    QVERIFY(canBeAdded());
}

void tst_AddFixtureSheet::typedWordsSearchTheList() {
    search("PA");
    QCOMPARE(listed(), QStringList{"Par, 5, Console"});
    QCOMPARE(names(), QStringList{"Par 2"});
    QCOMPARE(number(Address), 6);
}

void tst_AddFixtureSheet::keysOfTheSearchWalkTheList() {
    QTest::keyClick(words_, Qt::Key_Down);
    QCOMPARE(names(), QStringList{"Par 2"});
    QTest::keyClick(words_, Qt::Key_Up);
    QCOMPARE(names(), QStringList{"Dimmer"});
    QVERIFY(words_->hasFocus());
}

void tst_AddFixtureSheet::anImportedProfileSuggestsItsModel() {
    rig_->profiles().setProfile("Acme Wash - 12 Channels", QVariantList{controlEntry("Level")});
    open();
    search("acme");
    QCOMPARE(names(), QStringList{"Acme Wash"});
}

void tst_AddFixtureSheet::theControlsAreShownWithTheirSlots() {
    search("par");
    const QTreeWidget& preview = *sheet_->findChild<QTreeWidget*>();
    QStringList rows;
    for (int row = 0; row < preview.topLevelItemCount(); ++row) {
        const QTreeWidgetItem& item = *preview.topLevelItem(row);
        rows.append(QStringList{item.text(0), item.text(1), item.text(2)}.join(", "));
    }
    QCOMPARE(rows, (QStringList{"Red, 1, 6", "Fine, 2, 7", "(unused), 2, 9"}));
}

void tst_AddFixtureSheet::theFirstGapOfTheUniverseIsSuggested() {
    set(Universe, 0);
    QCOMPARE(number(Address), 1);
    set(Universe, 1);
    QCOMPARE(number(Address), 6);
}

void tst_AddFixtureSheet::anOwnAddressStays() {
    set(Address, 100);
    set(Universe, 0);
    set(Copies, 3);
    QCOMPARE(number(Address), 100);
    QCOMPARE(note(), QString("Dimmer 1 to Dimmer 3: slots 100 to 102 of universe 0."));
}

void tst_AddFixtureSheet::anOwnNameStaysUntilItIsTakenAway() {
    QLineEdit& field = *sheet_->findChild<QLineEdit*>("name");
    field.selectAll();
    QTest::keyClicks(&field, "House");
    search("par");
    QCOMPARE(names(), QStringList{"House"});
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Backspace);
    QVERIFY(!canBeAdded());
    set(Universe, 0);
    QCOMPARE(names(), QStringList{"Par 2"});
}

void tst_AddFixtureSheet::copiesStandOneAfterTheOther() {
    search("par");
    set(Universe, 0);
    set(Copies, 2);
    const QVariantList profile{QVariantMap{{"profile", "Par"}}};
    QCOMPARE(sheet_->newFixtures().placements,
             (QVariantList{placement("Par 2", 0, 1, profile), placement("Par 3", 0, 6, profile)}));
}

void tst_AddFixtureSheet::whatRunsPastTheUniverseCannotBeAdded() {
    search("par");
    set(Address, 509);
    QCOMPARE(note(), QString("The last slot would be 513, and a universe ends with 512."));
    QVERIFY(!canBeAdded());
    set(Address, 508);
    QVERIFY(canBeAdded());
    set(Copies, 200);
    QVERIFY(!canBeAdded());
}

void tst_AddFixtureSheet::slotsOfOthersAreToldAndCanBeShared() {
    set(Address, 2);
    QCOMPARE(note(), QString("Dimmer: slot 2 of universe 1. Shared with Par: slot 2."));
    QVERIFY(canBeAdded());
}

void tst_AddFixtureSheet::whileNothingIsChosenNothingCanBeAdded() {
    search("nobody");
    QCOMPARE(note(), QString("No fixture is chosen."));
    QVERIFY(!canBeAdded());
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(words_, Qt::Key_Backspace);
    }
    QVERIFY(canBeAdded());
}

void tst_AddFixtureSheet::aChangeOfThePatchIsFollowed() {
    patching_->removeFixtures({0});
    QCOMPARE(number(Address), 1);
    patching_->history().undo();
    QCOMPARE(number(Address), 6);
}

void tst_AddFixtureSheet::aProfileThatIsGoneCannotBeAdded() {
    patching_->addProfiles({{"Ring", QVariantList{controlEntry("Level")}}}, "Ring");
    open();
    search("ring");
    QVERIFY(canBeAdded());
    patching_->history().undo();
    QCOMPARE(note(), QString("There is no profile “Ring” any more."));
    QVERIFY(!canBeAdded());
}

void tst_AddFixtureSheet::theLibraryIsListedWhenItHasBeenLookedThrough() {
    QTest::keyClick(words_, Qt::Key_Down);
    QSignalSpy indexed(library_.get(), &FixtureLibrary::indexed);
    library_->startIndexing();
    QVERIFY(indexed.wait());
    QCOMPARE(listed(), (QStringList{"Dimmer, 1, Console", "Par, 5, Console", "Acme Head - Long, 3, Library",
                                    "Acme Head - Short, 1, Library"}));
    QCOMPARE(names(), QStringList{"Par 2"}); // still chosen
}

void tst_AddFixtureSheet::aModeOfTheLibraryComesWithItsProfile() {
    QSignalSpy indexed(library_.get(), &FixtureLibrary::indexed);
    library_->startIndexing();
    QVERIFY(indexed.wait());
    search("long acme");
    const NewFixtures fixtures = sheet_->newFixtures();
    QCOMPARE(fixtures.profiles.keys(), QStringList{"Acme Head - Long"});
    QCOMPARE(fixtures.placements,
             QVariantList{placement("Head", 1, 6, {QVariantMap{{"profile", "Acme Head - Long"}}})});
    patching_->addFixtures(fixtures);
    QCOMPARE(rig_->control("Head.Pan").channels(), 2U);
    QCOMPARE(rig_->control("Head.Dimmer").address(), 7U);
}

void tst_AddFixtureSheet::returnAddsAndEscapeDoesNot() {
    const QSignalSpy accepted(sheet_.get(), &QDialog::accepted);
    search("par");
    QTest::keyClick(words_, Qt::Key_Return);
    QCOMPARE(accepted.size(), 1);
    open();
    QTest::keyClick(words_, Qt::Key_Escape);
    QVERIFY(!sheet_->isVisible());
    QCOMPARE(accepted.size(), 1);
}

QTEST_MAIN(tst_AddFixtureSheet)
#include "tst_AddFixtureSheet.moc"
