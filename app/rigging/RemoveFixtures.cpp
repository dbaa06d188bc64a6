#include "rigging/RemoveFixtures.h"

#include <algorithm>

RemoveFixtures::RemoveFixtures(PatchEditor& editor, const QString& text, std::span<const std::size_t> rows)
    : QUndoCommand(text), editor_(editor) {
    for (const std::size_t row : rows) {
        if (!blocks_.empty() && blocks_.back().row + blocks_.back().count == row) {
            ++blocks_.back().count;
        } else {
            blocks_.push_back({.row = row, .count = 1, .fixtures = {}});
        }
    }
}

// From the last, so that the rows of the others stay what they are; and back from the first.
void RemoveFixtures::redo() {
    std::for_each(blocks_.rbegin(), blocks_.rend(),
                  [this](Block& block) { block.fixtures = editor_.takeFixtures(block.row, block.count); });
}

void RemoveFixtures::undo() {
    for (const Block& block : blocks_) {
        editor_.insertFixtures(block.row, block.fixtures);
    }
}
