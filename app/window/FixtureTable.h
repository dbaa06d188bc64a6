#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>

#include <vector>

class Fixture;
class Fixtures;
class Patching;

/// The rows of the fixture table: every fixture of the rig, with its name, universe and
/// address. What is typed into a universe or address cell is read as an integer and moves the fixture; the
/// cell then shows what the view holds. A fixture that overlaps another or runs past its universe carries a
/// mark, with the reason in its tip and for screen readers.
class FixtureTable : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column : int { Name = 0, Universe = 1, Address = 2 };

    /// `patching` has to outlive the table.
    explicit FixtureTable(Patching& patching);

    /// While detached the table has no rows, so that nothing asks for views that are being rebuilt.
    void detach();
    void attach();

    /// True once the operator has moved a fixture.
    bool dictDirty() const { return dictDirty_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    /// A cell was edited, whether or not that moved a fixture, or the patch was changed in another way.
    void edited();

private:
    void followPatch();
    const Fixture* fixtureAt(int row) const;
    bool moveFixture(int row, int column, int value);
    QString problemOf(int row) const;
    QVariant markedCell(const QModelIndex& index, int role) const;
    void refreshMarks();

    Patching& patching_;
    const Fixtures& fixtures_;
    bool attached_ = true;
    bool rowsChange_ = false;
    bool dictDirty_ = false;
    QIcon mark_;
    std::vector<QString> problems_; ///< by row, null where there is none
};
