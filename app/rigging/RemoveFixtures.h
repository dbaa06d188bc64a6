#pragma once

#include "rigging/PatchEditor.h"

#include <QUndoCommand>

/// Removes fixtures; undone, each comes back in its row with its levels, fade times and window place.
class RemoveFixtures : public QUndoCommand {
public:
    /// `rows` in ascending order, each once and all there. `editor` has to outlive the command.
    RemoveFixtures(PatchEditor& editor, const QString& text, std::span<const std::size_t> rows);

    void redo() override;
    void undo() override;

private:
    /// Fixtures that stand below one another.
    struct Block {
        std::size_t row;
        std::size_t count;
        std::vector<KeptFixture> fixtures;
    };

    PatchEditor& editor_;
    std::vector<Block> blocks_;
};
