#include "window/FixtureTable.h"

#include "fixtures/ControlView.h"
#include "plist/Reading.h"

#include <array>

namespace {

constexpr std::array columnTitles = {"Fixture", "Universe", "Address"};

const ControlView* viewAt(int row) {
    const auto* views = ControlView::controlViews();
    const auto index = static_cast<std::size_t>(row);
    return views && row >= 0 && index < views->size() ? (*views)[index].get() : nullptr;
}

QString cellText(const ControlView* view, int column) {
    if (!view) {
        return {};
    }
    switch (column) {
    case FixtureTable::Name:
        return view->name();
    case FixtureTable::Universe:
        return QString::number(static_cast<int>(view->universe()));
    case FixtureTable::Address:
        return QString::number(static_cast<int>(view->address()));
    default:
        return {};
    }
}

} // namespace

void FixtureTable::detach() {
    beginResetModel();
    attached_ = false;
    endResetModel();
}

void FixtureTable::attach() {
    beginResetModel();
    attached_ = true;
    endResetModel();
}

int FixtureTable::rowCount(const QModelIndex& parent) const {
    const auto* views = ControlView::controlViews();
    return attached_ && views && !parent.isValid() ? static_cast<int>(views->size()) : 0;
}

int FixtureTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columnTitles.size());
}

QVariant FixtureTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return columnTitles.at(static_cast<std::size_t>(section));
}

QVariant FixtureTable::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    return cellText(viewAt(index.row()), index.column());
}

bool FixtureTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole) {
        return false;
    }
    emit edited(index.row(), static_cast<Column>(index.column()), integerValue(value));
    emit dataChanged(index, index);
    return true;
}

Qt::ItemFlags FixtureTable::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == Name ? flags : flags | Qt::ItemIsEditable;
}
