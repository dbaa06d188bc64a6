#pragma once

#include <QAbstractTableModel>

/// The rows of the fixture table: every fixture view in the registry's order, with its name, universe and
/// address. What is typed into a universe or address cell is read as an integer and handed over; the cell
/// then shows what the view holds.
class FixtureTable : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name = 0, Universe = 1, Address = 2 };

    using QAbstractTableModel::QAbstractTableModel;

    /// While detached the table has no rows, so that nothing asks for views that are being rebuilt.
    void detach();
    void attach();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    /// `value` is what was typed, as an integer.
    void edited(int row, FixtureTable::Column column, int value);

private:
    bool attached_ = true;
};
