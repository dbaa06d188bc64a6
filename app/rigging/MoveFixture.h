#pragma once

#include "rigging/PatchEditor.h"

#include <QUndoCommand>

/// Gives a fixture another universe or address.
class MoveFixture : public QUndoCommand {
public:
    struct Change {
        std::size_t row;
        PlacementNumber number;
        int before;
        int after;
    };

    /// `editor` has to outlive the command.
    MoveFixture(PatchEditor& editor, const QString& text, const Change& change)
        : QUndoCommand(text), editor_(editor), change_(change) {}

    // A fixture without a placement stays where it is, and there is nothing to undo.
    void redo() override { setObsolete(!editor_.setNumber(change_.row, change_.number, change_.after)); }
    void undo() override { editor_.setNumber(change_.row, change_.number, change_.before); }

private:
    PatchEditor& editor_;
    Change change_;
};
