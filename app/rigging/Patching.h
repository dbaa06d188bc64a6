#pragma once

#include "rigging/PatchEditor.h"

#include <QUndoStack>
#include <QVariantMap>

/// Fixtures that are to be added, and the profiles that come with them.
struct NewFixtures {
    QVariantList placements;
    QVariantMap profiles; ///< name to entries
};

/// What the operator can do to the patch, each step with its undo.
class Patching : public QObject {
    Q_OBJECT

public:
    /// All have to outlive this object.
    Patching(Settings& settings, Profiles& profiles, Fixtures& fixtures, WindowPlaces& places);
    ~Patching() override;

    /// Says what changes, by rows.
    const PatchEditor& editor() const { return editor_; }
    QUndoStack& history() { return history_; }
    /// To be called when the rig becomes another: what was done to the one before cannot be undone any more.
    void forget() { history_.clear(); }

    /// Adds fixtures below the others.
    void addFixtures(const NewFixtures& fixtures);
    /// Adds profiles to the rig; `source` is what they come from.
    void addProfiles(const QVariantMap& profiles, const QString& source);
    /// Removes the fixtures in these rows; rows without one are passed over.
    void removeFixtures(std::vector<std::size_t> rows);
    /// Gives the fixture in a row a universe or an address; true when that is a step to undo. The one that it
    /// has is only written again, and without a fixture or a placement nothing is.
    bool moveFixture(std::size_t row, PlacementNumber number, int value);

signals:
    /// A step was taken, undone or done again.
    void patchChanged();

private:
    PatchEditor editor_;
    QUndoStack history_;
};
