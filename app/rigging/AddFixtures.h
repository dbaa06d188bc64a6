#pragma once

#include "rigging/PatchEditor.h"

#include <QUndoCommand>

/// Adds fixtures below the others, and the profiles that come with them; undone, both go again.
class AddFixtures : public QUndoCommand {
public:
    /// `editor` has to outlive the command.
    AddFixtures(PatchEditor& editor, const QString& text, std::vector<KeptFixture> fixtures,
                std::vector<KeptProfile> profiles);

    void redo() override;
    void undo() override;

private:
    PatchEditor& editor_;
    std::size_t row_;
    std::size_t count_;
    std::vector<KeptFixture> fixtures_; ///< while they are not in the patch
    std::vector<KeptProfile> profiles_; ///< those of the other side of the change
};
