#include "rigging/AddFixtures.h"

#include "rig/Fixtures.h"

AddFixtures::AddFixtures(PatchEditor& editor, const QString& text, std::vector<KeptFixture> fixtures,
                         std::vector<KeptProfile> profiles)
    : QUndoCommand(text), editor_(editor), row_(editor.fixtures().count()), count_(fixtures.size()),
      fixtures_(std::move(fixtures)), profiles_(std::move(profiles)) {}

void AddFixtures::redo() {
    profiles_ = editor_.exchangeProfiles(profiles_);
    editor_.insertFixtures(row_, fixtures_);
}

void AddFixtures::undo() {
    fixtures_ = editor_.takeFixtures(row_, count_);
    profiles_ = editor_.exchangeProfiles(profiles_);
}
