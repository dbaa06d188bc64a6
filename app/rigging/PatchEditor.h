#pragma once

#include "rigging/KeptFixture.h"

#include <QObject>
#include <QString>

#include <span>

class Fixtures;
class Profiles;
class Settings;
class WindowPlaces;

/// A profile of the rig as it stands, or is to stand, in the settings and in the profile table; invalid where
/// it does not.
struct KeptProfile {
    QString name;
    QVariant inSettings;
    QVariant inTable;
};

enum class PlacementNumber { Universe, Address };

/// Changes the patch: fixtures come, go and move, in step in the settings and among the fixtures, so that
/// row r is placement r and fixture r. Knows nothing of asking and of undoing.
class PatchEditor : public QObject {
    Q_OBJECT

public:
    /// All have to outlive the editor.
    PatchEditor(Settings& settings, Profiles& profiles, Fixtures& fixtures, WindowPlaces& places)
        : settings_(settings), profiles_(profiles), fixtures_(fixtures), places_(places) {}

    const Fixtures& fixtures() const { return fixtures_; }

    /// Inserts fixtures before the one in `row`, with their levels, in one tick.
    void insertFixtures(std::size_t row, std::span<const KeptFixture> fixtures);
    /// Takes so many fixtures away, from `row` on, and returns them in their order. They have to be there.
    std::vector<KeptFixture> takeFixtures(std::size_t row, std::size_t count);

    /// Sets the universe or the address of a fixture; false when there is none in that row or the settings
    /// hold no placement for it.
    bool setNumber(std::size_t row, PlacementNumber number, int value);

    /// Puts profiles in place and returns what stood there before.
    std::vector<KeptProfile> exchangeProfiles(std::span<const KeptProfile> profiles);

signals:
    /// Rows first..last are about to come or go, and have done so.
    void rowsAboutToBeInserted(int first, int last);
    void rowsInserted();
    void rowsAboutToBeRemoved(int first, int last);
    void rowsRemoved();
    /// A fixture has been given a universe or an address.
    void fixtureMoved(int row, PlacementNumber number);

private:
    void takeUpPlaces(std::size_t row, std::span<const KeptFixture> fixtures);

    Settings& settings_;
    Profiles& profiles_;
    Fixtures& fixtures_;
    WindowPlaces& places_;
};
