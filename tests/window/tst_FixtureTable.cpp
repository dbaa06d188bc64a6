#include "window/FixtureTable.h"

#include "rigging/Patching.h"
#include "settings/Settings.h"
#include "support/TestRig.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

namespace {

constexpr int NameColumn = 0;
constexpr int UniverseColumn = 1;
constexpr int AddressColumn = 2;

/// A cell of the table that is open for editing in a view in front.
class OpenCell {
public:
    OpenCell(QAbstractItemModel& table, int row, int column) {
        view_.setModel(&table);
        view_.show();
        view_.activateWindow();
        if (QTest::qWaitForWindowActive(&view_)) {
            view_.setCurrentIndex(table.index(row, column));
            QTest::keyClick(&view_, Qt::Key_F2);
            editor_ = view_.viewport()->findChild<QLineEdit*>();
        }
    }

    bool isOpen() const { return editor_; }
    QString text() const { return editor_->text(); }
    void type(const QString& text) {
        QTest::keyClick(editor_, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor_, text);
    }
    void finish() { QTest::keyClick(editor_, Qt::Key_Return); }

private:
    QTableView view_;
    QPointer<QLineEdit> editor_; // the view takes it away
};

} // namespace

/// A rig of two fixtures: Spot in universe 0 at 1, Wash in universe 3 at 20.
class tst_FixtureTable : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theColumnsAreHeaded();
    void thereIsARowForEachFixture();
    void withoutFixturesThereIsNoRow();
    void numbersAreShownAsTheyWereWritten();
    void whatIsNoCellIsEmpty();
    void itKeepsTheRulesOfTheToolkit();

    void anEditedAddressMovesTheFixture();
    void anEditedUniverseMovesTheFixture();
    void whatIsTypedIsReadAsAnInteger_data();
    void whatIsTypedIsReadAsAnInteger();
    void aNameCannotBeEdited();
    void aFixtureWithoutAPlacementStays_data();
    void aFixtureWithoutAPlacementStays();
    void aRowWithoutAFixtureChangesNothing();
    void otherRolesAreNoEdits();

    void aFixtureThatStandsWellCarriesNoMark();
    void anOverlapIsMarkedOnBothFixturesAndGoesAgain();
    void aFixtureThatRunsPastItsUniverseIsMarked();
    void marksAreThereForAFreshRig();
    void anEditIsAStepThatCanBeUndone();
    void rowsComeAndGoWithTheirFixtures();
    void anOpenCellOfARemovedFixtureGoesUnread_data();
    void anOpenCellOfARemovedFixtureGoesUnread();
    void anOpenCellBelowARemovedFixtureStaysOpen();

    void whileDetachedThereAreNoRows();
    void aCellIsEditedInPlace();
    void aRebuildTakesAnOpenEditorAwayUnread();

private:
    QString cell(int row, int column) const { return table_->index(row, column).data().toString(); }
    bool edit(int row, int column, const QVariant& value) {
        return table_->setData(table_->index(row, column), value, Qt::EditRole);
    }
    QVariant placed(int row, const QString& key) const {
        return settings_.views().at(row).toMap().value(key);
    }

    Settings settings_;
    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<Patching> patching_;
    std::unique_ptr<FixtureTable> table_;
    Fixture* spot_ = nullptr;
    Fixture* wash_ = nullptr;
};

void tst_FixtureTable::init() {
    const QVariantMap spot = placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan")});
    const QVariantMap wash = placement("Wash", 3, 20, {controlEntry("Dimmer")});
    settings_ = Settings(QVariantMap{{"views", QVariantList{spot, wash}}});
    rig_ = std::make_unique<TestRig>();
    spot_ = &rig_->add(spot);
    wash_ = &rig_->add(wash);
    patching_ = std::make_unique<Patching>(settings_, rig_->profiles(), rig_->fixtures(), rig_->places());
    table_ = std::make_unique<FixtureTable>(*patching_);
}

void tst_FixtureTable::cleanup() {
    table_.reset();
    patching_.reset();
    rig_.reset();
}

void tst_FixtureTable::theColumnsAreHeaded() {
    QCOMPARE(table_->columnCount(), 3);
    QCOMPARE(table_->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Fixture"));
    QCOMPARE(table_->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Universe"));
    QCOMPARE(table_->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Address"));
    QVERIFY(!table_->headerData(3, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!table_->headerData(-1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!table_->headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void tst_FixtureTable::thereIsARowForEachFixture() {
    QCOMPARE(table_->rowCount(), 2);
    QCOMPARE(cell(0, NameColumn), QString("Spot"));
    QCOMPARE(cell(0, UniverseColumn), QString("0"));
    QCOMPARE(cell(0, AddressColumn), QString("1"));
    QCOMPARE(cell(1, NameColumn), QString("Wash"));
    QCOMPARE(cell(1, UniverseColumn), QString("3"));
    QCOMPARE(cell(1, AddressColumn), QString("20"));
    QCOMPARE(table_->rowCount(table_->index(0, 0)), 0);
}

void tst_FixtureTable::withoutFixturesThereIsNoRow() {
    rig_->fixtures().remove(0, 2);
    QCOMPARE(table_->rowCount(), 0);
}

void tst_FixtureTable::numbersAreShownAsTheyWereWritten() {
    spot_->setUniverse(0xFFFFFFFFU);
    spot_->setAddress(0x80000000U);
    QCOMPARE(cell(0, UniverseColumn), QString("-1"));
    QCOMPARE(cell(0, AddressColumn), QString("-2147483648"));
    rig_->add(QString(201, u'x'), {"Dimmer"});
    QCOMPARE(cell(2, NameColumn), QString(200, u'x') + u'…');
    QCOMPARE(table_->index(2, NameColumn).data(Qt::ToolTipRole).toString(), QString(200, u'x') + u'…');
}

void tst_FixtureTable::whatIsNoCellIsEmpty() {
    QCOMPARE(table_->data({}, Qt::DisplayRole).toString(), QString());
    QCOMPARE(table_->data(table_->index(2, 0), Qt::DisplayRole).toString(), QString());
    const QModelIndex lastCell = table_->index(1, AddressColumn);
    rig_->fixtures().remove(0, 2);
    QCOMPARE(table_->data(lastCell, Qt::DisplayRole).toString(), QString());
    QVERIFY(!table_->data(lastCell, Qt::DecorationRole).isValid());
    QVERIFY(!table_->data(lastCell, Qt::ToolTipRole).isValid());
}

void tst_FixtureTable::itKeepsTheRulesOfTheToolkit() {
    const QAbstractItemModelTester tester(table_.get(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QVERIFY(edit(0, AddressColumn, "17"));
    table_->detach();
    table_->attach();
}

void tst_FixtureTable::anEditedAddressMovesTheFixture() {
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    QSignalSpy changed(table_.get(), &FixtureTable::dataChanged);
    QVERIFY(!table_->dictDirty());
    QVERIFY(edit(0, AddressColumn, "17"));
    QCOMPARE(spot_->address(), 17U);
    QCOMPARE(spot_->controls().at(0)->address(), 16U);
    QCOMPARE(spot_->controls().at(1)->address(), 17U);
    QCOMPARE(spot_->controls().at(1)->toolTip(), QString("Univ: 0, Addr: 18"));
    QCOMPARE(spot_->title(), QString("Spot Univ: 0 Addr: 17"));
    QCOMPARE(placed(0, "address"), QVariant(17LL));
    QCOMPARE(placed(0, "universe"), QVariant(0LL));
    QCOMPARE(placed(1, "address"), QVariant(20LL));
    QCOMPARE(cell(0, AddressColumn), QString("17"));
    QVERIFY(table_->dictDirty());
    QCOMPARE(edited.size(), 1);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex(), table_->index(0, AddressColumn));
}

void tst_FixtureTable::anEditedUniverseMovesTheFixture() {
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    QVERIFY(edit(1, UniverseColumn, "5"));
    QCOMPARE(wash_->universe(), 5U);
    QCOMPARE(wash_->controls().at(0)->toolTip(), QString("Univ: 5, Addr: 20"));
    QCOMPARE(wash_->title(), QString("Wash Univ: 5 Addr: 20"));
    QCOMPARE(placed(1, "universe"), QVariant(5LL));
    QCOMPARE(placed(0, "universe"), QVariant(0LL));
    QCOMPARE(spot_->universe(), 0U);
    QVERIFY(table_->dictDirty());
    QCOMPARE(edited.size(), 1);
}

void tst_FixtureTable::whatIsTypedIsReadAsAnInteger_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<qlonglong>("stored");
    QTest::addColumn<QString>("shown");

    QTest::newRow("digits") << "17" << 17LL << "17";
    QTest::newRow("letters behind") << "17b" << 17LL << "17";
    QTest::newRow("a blank before") << " 17" << 17LL << "17";
    QTest::newRow("no number") << "left" << 0LL << "0";
    QTest::newRow("nothing") << "" << 0LL << "0";
    QTest::newRow("negative") << "-3" << -3LL << "-3";
    QTest::newRow("past 512") << "513" << 513LL << "513";
    QTest::newRow("past 32 bits") << "99999999999" << 2147483647LL << "2147483647";
    QTest::newRow("far below zero") << "-99999999999" << -2147483648LL << "-2147483648";
}

void tst_FixtureTable::whatIsTypedIsReadAsAnInteger() {
    QFETCH(const QString, typed);
    QFETCH(const qlonglong, stored);
    QFETCH(const QString, shown);

    for (const int column : {UniverseColumn, AddressColumn}) {
        QVERIFY(edit(0, column, typed));
        QCOMPARE(cell(0, column), shown);
    }
    QCOMPARE(placed(0, "universe"), QVariant(stored));
    QCOMPARE(placed(0, "address"), QVariant(stored));
}

void tst_FixtureTable::aNameCannotBeEdited() {
    const auto before = settings_.dictionary();
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    QVERIFY(!(table_->flags(table_->index(0, NameColumn)) & Qt::ItemIsEditable));
    QVERIFY(table_->flags(table_->index(0, UniverseColumn)) & Qt::ItemIsEditable);
    QVERIFY(table_->flags(table_->index(0, AddressColumn)) & Qt::ItemIsEditable);
    edit(0, NameColumn, "17");
    QCOMPARE(settings_.dictionary(), before);
    QCOMPARE(cell(0, NameColumn), QString("Spot"));
    QVERIFY(!table_->dictDirty());
    QCOMPARE(edited.size(), 1);
}

void tst_FixtureTable::aFixtureWithoutAPlacementStays_data() {
    QTest::addColumn<QVariant>("views");

    QTest::newRow("no placements") << QVariant();
    QTest::newRow("too few") << QVariant(QVariantList());
    QTest::newRow("of a wrong type") << QVariant(QVariantList{"Spot", "Wash"});
}

void tst_FixtureTable::aFixtureWithoutAPlacementStays() {
    QFETCH(const QVariant, views);

    const QVariantMap rig{{"views", views}};
    settings_ = Settings(rig);
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    edit(0, AddressColumn, "17");
    QCOMPARE(spot_->address(), 1U);
    QCOMPARE(cell(0, AddressColumn), QString("1"));
    QCOMPARE(settings_.dictionary(), std::optional(rig));
    QVERIFY(!table_->dictDirty());
    QCOMPARE(edited.size(), 1);
}

void tst_FixtureTable::aRowWithoutAFixtureChangesNothing() {
    const auto before = settings_.dictionary();
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    edit(2, AddressColumn, "17");
    QCOMPARE(edited.size(), 1);
    const QModelIndex cellOfAFixture = table_->index(1, AddressColumn);
    rig_->fixtures().remove(0, 2);
    table_->setData(cellOfAFixture, "17", Qt::EditRole);
    QCOMPARE(edited.size(), 2);
    QCOMPARE(settings_.dictionary(), before);
    QVERIFY(!table_->dictDirty());
}

void tst_FixtureTable::otherRolesAreNoEdits() {
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    QVERIFY(!table_->setData(table_->index(0, AddressColumn), "17", Qt::DisplayRole));
    QCOMPARE(spot_->address(), 1U);
    QCOMPARE(edited.size(), 0);
}

void tst_FixtureTable::aFixtureThatStandsWellCarriesNoMark() {
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QModelIndex index = table_->index(row, column);
            QVERIFY(!index.data(Qt::DecorationRole).isValid());
            QVERIFY(!index.data(Qt::ForegroundRole).isValid());
            QVERIFY(!index.data(Qt::AccessibleTextRole).isValid());
        }
    }
    QCOMPARE(table_->index(0, NameColumn).data(Qt::ToolTipRole).toString(), QString("Spot"));
}

void tst_FixtureTable::anOverlapIsMarkedOnBothFixturesAndGoesAgain() {
    edit(1, UniverseColumn, "0");
    const QSignalSpy changed(table_.get(), &FixtureTable::dataChanged);
    edit(1, AddressColumn, "2");
    const QModelIndex spot = table_->index(0, NameColumn);
    const QModelIndex wash = table_->index(1, NameColumn);
    QVERIFY(!spot.data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(!wash.data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(!table_->index(0, AddressColumn).data(Qt::DecorationRole).isValid());
    QVERIFY(table_->index(0, AddressColumn).data(Qt::ForegroundRole).isValid());
    QCOMPARE(spot.data(Qt::ToolTipRole).toString(), QString("Spot\nOverlaps Wash in slot 2"));
    QCOMPARE(table_->index(1, AddressColumn).data(Qt::ToolTipRole).toString(),
             QString("Wash\nOverlaps Spot in slot 2"));
    QCOMPARE(spot.data(Qt::AccessibleTextRole).toString(), QString("Spot, warning: Overlaps Wash in slot 2"));
    QStringList rows;
    for (const QVariantList& change : changed) {
        rows.append(QString::number(change.at(0).toModelIndex().row()));
    }
    QVERIFY(rows.contains("0") && rows.contains("1"));

    edit(1, AddressColumn, "20");
    QVERIFY(!spot.data(Qt::DecorationRole).isValid());
    QVERIFY(!wash.data(Qt::DecorationRole).isValid());
}

void tst_FixtureTable::aFixtureThatRunsPastItsUniverseIsMarked() {
    edit(0, AddressColumn, "512");
    QCOMPARE(table_->index(0, NameColumn).data(Qt::ToolTipRole).toString(),
             QString("Spot\nSends nothing on slot 513: a universe ends at slot 512"));
    edit(0, AddressColumn, "511");
    QVERIFY(!table_->index(0, NameColumn).data(Qt::DecorationRole).isValid());
}

void tst_FixtureTable::marksAreThereForAFreshRig() {
    rig_->add("Late", {"Dimmer"}, 0, 1);
    const FixtureTable fresh(*patching_);
    QVERIFY(fresh.index(0, NameColumn).data(Qt::DecorationRole).isValid());
    QVERIFY(!table_->index(0, NameColumn).data(Qt::DecorationRole).isValid());
    table_->attach();
    QVERIFY(table_->index(0, NameColumn).data(Qt::DecorationRole).isValid());
    QVERIFY(table_->index(2, NameColumn).data(Qt::DecorationRole).isValid());
}

void tst_FixtureTable::anEditIsAStepThatCanBeUndone() {
    edit(0, AddressColumn, "17");
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    QSignalSpy changed(table_.get(), &FixtureTable::dataChanged);
    patching_->history().undo();
    QCOMPARE(cell(0, AddressColumn), QString("1"));
    QCOMPARE(edited.size(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex(), table_->index(0, AddressColumn));
    edit(0, AddressColumn, "1");
    QCOMPARE(edited.size(), 2);
    QVERIFY(!patching_->history().canUndo());
}

void tst_FixtureTable::rowsComeAndGoWithTheirFixtures() {
    const QAbstractItemModelTester tester(table_.get(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    patching_->addFixtures({.placements = {placement("Bar", 0, 50, {controlEntry("Red")})}, .profiles = {}});
    QCOMPARE(table_->rowCount(), 3);
    QCOMPARE(cell(2, NameColumn), QString("Bar"));
    patching_->removeFixtures({0, 2});
    QCOMPARE(table_->rowCount(), 1);
    QCOMPARE(cell(0, NameColumn), QString("Wash"));
    patching_->history().undo();
    QCOMPARE(table_->rowCount(), 3);
    QCOMPARE(cell(0, NameColumn), QString("Spot"));
    QCOMPARE(edited.size(), 3);
}

void tst_FixtureTable::anOpenCellOfARemovedFixtureGoesUnread_data() {
    QTest::addColumn<int>("row");

    QTest::newRow("the first") << 0;
    QTest::newRow("the last") << 1;
}

void tst_FixtureTable::anOpenCellOfARemovedFixtureGoesUnread() {
    QFETCH(const int, row);
    OpenCell address(*table_, row, AddressColumn);
    QVERIFY(address.isOpen());
    address.type("99");
    const QVariant before = placed(1 - row, "address");
    patching_->removeFixtures({static_cast<std::size_t>(row)});
    QTRY_VERIFY(!address.isOpen());
    QCOMPARE(patching_->history().count(), 1);
    QCOMPARE(placed(0, "address"), before);
    patching_->history().undo();
    QCOMPARE(placed(1 - row, "address"), before);
}

void tst_FixtureTable::anOpenCellBelowARemovedFixtureStaysOpen() {
    OpenCell address(*table_, 1, AddressColumn);
    QVERIFY(address.isOpen());
    patching_->removeFixtures({0});
    QVERIFY(address.isOpen());
    address.type("99");
    address.finish();
    QTRY_COMPARE(wash_->address(), 99U);
    QCOMPARE(placed(0, "address"), QVariant(99LL));
}

void tst_FixtureTable::whileDetachedThereAreNoRows() {
    const QSignalSpy reset(table_.get(), &FixtureTable::modelReset);
    table_->detach();
    QCOMPARE(table_->rowCount(), 0);
    table_->attach();
    QCOMPARE(table_->rowCount(), 2);
    QCOMPARE(reset.size(), 2);
}

void tst_FixtureTable::aCellIsEditedInPlace() {
    OpenCell address(*table_, 0, AddressColumn);
    QVERIFY(address.isOpen());
    QCOMPARE(address.text(), QString("1"));
    address.type("17");
    address.finish();
    QTRY_COMPARE(spot_->address(), 17U);
    QCOMPARE(cell(0, AddressColumn), QString("17"));
}

void tst_FixtureTable::aRebuildTakesAnOpenEditorAwayUnread() {
    OpenCell address(*table_, 1, AddressColumn);
    QVERIFY(address.isOpen());
    address.type("99");

    const QSignalSpy edited(table_.get(), &FixtureTable::edited);
    table_->detach();
    rig_->fixtures().remove(0, 2);
    QCoreApplication::processEvents();
    rig_->add(placement("New", 7, 8, {controlEntry("Dimmer")}));
    table_->attach();
    QTRY_VERIFY(!address.isOpen());
    QCOMPARE(table_->rowCount(), 1);
    QCOMPARE(cell(0, AddressColumn), QString("8"));
    QCOMPARE(edited.size(), 0);
}

QTEST_MAIN(tst_FixtureTable)
#include "tst_FixtureTable.moc"
