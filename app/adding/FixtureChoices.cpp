#include "adding/FixtureChoices.h"

#include "rig/ShownText.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array columnTitles = {"Fixture", "Channels", "From"};

} // namespace

void FixtureChoices::append(std::vector<FixtureChoice> choices) {
    for (FixtureChoice& choice : choices) {
        searched_.push_back(choice.text.toLower());
        choices_.push_back(std::move(choice));
    }
    showMatching();
}

void FixtureChoices::setWords(const QString& words) {
    words_ = words.toLower().split(' ', Qt::SkipEmptyParts);
    showMatching();
}

bool FixtureChoices::matches(std::size_t choice) const {
    return std::ranges::all_of(words_, [&](const QString& word) { return searched_[choice].contains(word); });
}

// All rows at once: thousands come and go with a key.
void FixtureChoices::showMatching() {
    beginResetModel();
    rows_.clear();
    for (std::size_t choice = 0; choice < choices_.size(); ++choice) {
        if (matches(choice)) {
            rows_.push_back(choice);
        }
    }
    endResetModel();
}

const FixtureChoice* FixtureChoices::choice(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    return index.isValid() && row < rows_.size() ? &choices_[rows_[row]] : nullptr;
}

int FixtureChoices::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FixtureChoices::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columnTitles.size());
}

QVariant FixtureChoices::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isColumn = section >= 0 && section < columnCount();
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || !isColumn) {
        return {};
    }
    return columnTitles[static_cast<std::size_t>(section)];
}

QVariant FixtureChoices::data(const QModelIndex& index, int role) const {
    const FixtureChoice* const choice = this->choice(index);
    if (!choice || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    switch (index.column()) {
    case Channels:
        return choice->channels;
    case From:
        return choice->from;
    default:
        return shownName(choice->text);
    }
}
