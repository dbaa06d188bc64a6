#pragma once

#include "output/Engine.h"
#include "panels/FixtureWindows.h"
#include "rig/Faders.h"
#include "rig/Fixtures.h"
#include "rig/Profiles.h"
#include "rig/WindowPlaces.h"

#include <QVariantMap>

/// A rig of full universes: one fixture of 512 eight-bit controls in each, in columns of 32, windows hidden
/// unless asked for. Gone with the object.
class BenchRig {
public:
    explicit BenchRig(int universeCount, int controlsPerUniverse = 512);

    void showWindows(bool shown) const;

    /// Ticked by hand; without a socket of its own nothing is sent.
    Engine& engine() { return engine_; }
    Faders& faders() { return faders_; }

private:
    class NoPlaces : public WindowPlaces {
    public:
        std::optional<QPoint> place(const QString&) const override { return {}; }
        void setPlace(const QString&, QPoint) override {}
        void forgetPlace(const QString&) override {}
    };

    Engine engine_;
    Faders faders_;
    Profiles profiles_;
    Fixtures fixtures_;
    NoPlaces places_;
    FixtureWindows windows_;
};

/// The rig of that many universes, kept between benchmarks and at rest.
BenchRig& rigOf(int universeCount);
void releaseRig();

/// A profile of `controlCount` faders in columns of 32.
QVariantList columnsOfFaders(int controlCount);
