#include "window/FixtureTable.h"

#include "patch/Patch.h"
#include "patch/PatchProblems.h"
#include "plist/Reading.h"
#include "rig/Fixtures.h"
#include "rig/ShownText.h"
#include "rigging/Patching.h"
#include "window/WarningMark.h"

#include <QGuiApplication>
#include <QPalette>

#include <array>
#include <utility>

namespace {

constexpr std::array columnTitles = {"Fixture", "Universe", "Address"};

QString cellText(const Fixture* fixture, int column) {
    if (!fixture) {
        return {};
    }
    switch (column) {
    case FixtureTable::Name:
        return shownName(fixture->name());
    case FixtureTable::Universe:
        return QString::number(static_cast<int>(fixture->universe()));
    case FixtureTable::Address:
        return QString::number(static_cast<int>(fixture->address()));
    default:
        return {};
    }
}

} // namespace

FixtureTable::FixtureTable(Patching& patching)
    : patching_(patching), fixtures_(patching.editor().fixtures()), mark_(warningMark()),
      problems_(patchProblems(presentPatch(fixtures_))) {
    followPatch();
    connect(this, &FixtureTable::edited, this, &FixtureTable::refreshMarks);
    connect(&patching, &Patching::patchChanged, this, &FixtureTable::edited);
}

void FixtureTable::followPatch() {
    const PatchEditor* const editor = &patching_.editor();
    connect(editor, &PatchEditor::rowsAboutToBeInserted, this, [this](int first, int last) {
        rowsChange_ = true;
        beginInsertRows({}, first, last);
    });
    connect(editor, &PatchEditor::rowsInserted, this, [this] {
        endInsertRows();
        rowsChange_ = false;
    });
    connect(editor, &PatchEditor::rowsAboutToBeRemoved, this, [this](int first, int last) {
        rowsChange_ = true;
        beginRemoveRows({}, first, last);
    });
    connect(editor, &PatchEditor::rowsRemoved, this, [this] {
        endRemoveRows();
        rowsChange_ = false;
    });
    connect(editor, &PatchEditor::fixtureMoved, this, [this](int row, PlacementNumber number) {
        dictDirty_ = true;
        const QModelIndex cell = index(row, number == PlacementNumber::Universe ? Universe : Address);
        emit dataChanged(cell, cell);
    });
}

const Fixture* FixtureTable::fixtureAt(int row) const {
    return row < 0 ? nullptr : fixtures_.at(static_cast<std::size_t>(row));
}

void FixtureTable::detach() {
    beginResetModel();
    attached_ = false;
    endResetModel();
}

void FixtureTable::attach() {
    beginResetModel();
    attached_ = true;
    problems_ = patchProblems(presentPatch(fixtures_));
    endResetModel();
}

int FixtureTable::rowCount(const QModelIndex& parent) const {
    return attached_ && !parent.isValid() ? static_cast<int>(fixtures_.count()) : 0;
}

int FixtureTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columnTitles.size());
}

QVariant FixtureTable::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isColumn = section >= 0 && section < columnCount();
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || !isColumn) {
        return {};
    }
    return columnTitles[static_cast<std::size_t>(section)];
}

QVariant FixtureTable::data(const QModelIndex& index, int role) const {
    if (QVariant marked = markedCell(index, role); marked.isValid()) {
        return marked;
    }
    if (role == Qt::ToolTipRole && index.column() == Name) {
        return cellText(fixtureAt(index.row()), Name); // a long one is cut in its cell
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    return cellText(fixtureAt(index.row()), index.column());
}

QString FixtureTable::problemOf(int row) const {
    const auto place = static_cast<std::size_t>(row);
    return row >= 0 && place < problems_.size() ? problems_[place] : QString();
}

// What a fixture that is not where it should be shows besides its numbers; invalid for all others.
QVariant FixtureTable::markedCell(const QModelIndex& index, int role) const {
    const QString problem = problemOf(index.row());
    if (problem.isNull()) {
        return {};
    }
    const bool isName = index.column() == Name;
    const QString fixture = cellText(fixtureAt(index.row()), Name);
    switch (role) {
    case Qt::DecorationRole:
        return isName ? QVariant(mark_) : QVariant();
    case Qt::ForegroundRole:
        return warningColour(QGuiApplication::palette());
    case Qt::ToolTipRole:
        return fixture + '\n' + problem;
    case Qt::AccessibleTextRole:
        return isName ? QVariant(fixture + ", warning: " + QString(problem).replace('\n', ". ")) : QVariant();
    default:
        return {};
    }
}

void FixtureTable::refreshMarks() {
    const std::vector<QString> old = std::exchange(problems_, patchProblems(presentPatch(fixtures_)));
    for (int row = 0; row < rowCount(); ++row) {
        const auto place = static_cast<std::size_t>(row);
        if (place >= old.size() || old[place] != problemOf(row)) {
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        }
    }
}

// A cell that is open while its row comes or goes would hand in its text.
bool FixtureTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || rowsChange_) {
        return false;
    }
    if (!moveFixture(index.row(), index.column(), integerValue(value))) {
        emit edited(); // the patch has not
    }
    return true;
}

bool FixtureTable::moveFixture(int row, int column, int value) {
    if (row < 0 || (column != Universe && column != Address)) {
        return false;
    }
    return patching_.moveFixture(static_cast<std::size_t>(row),
                                 column == Universe ? PlacementNumber::Universe : PlacementNumber::Address,
                                 value);
}

Qt::ItemFlags FixtureTable::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isNumber = index.column() == Universe || index.column() == Address;
    return isNumber ? flags | Qt::ItemIsEditable : flags;
}
