#pragma once

#include "fixtures/Profiles.h"
#include "fixtures/WindowPlaces.h"

#include <QVariantMap>

#include <map>

/// A rig of full universes: one fixture of 512 eight-bit controls in each, in columns of 32, windows hidden
/// unless asked for. Gone with the object.
class BenchRig {
public:
    explicit BenchRig(int universeCount, int controlsPerUniverse = 512);
    ~BenchRig();
    BenchRig(const BenchRig&) = delete;
    BenchRig& operator=(const BenchRig&) = delete;

    void showWindows(bool shown) const;

private:
    class NoPlaces : public WindowPlaces {
    public:
        std::optional<QPoint> place(const QString&) const override { return {}; }
        void setPlace(const QString&, QPoint) override {}
        void forgetPlace(const QString&) override {}
    };

    Profiles profiles_;
    NoPlaces places_;
};

/// The rig of that many universes, kept between benchmarks and at rest.
BenchRig& rigOf(int universeCount);
void releaseRig();

/// A profile of `controlCount` faders in columns of 32.
QVariantList columnsOfFaders(int controlCount);

/// Where the ticks are sent to: 127.0.0.250, the Art-Net port.
inline constexpr std::uint32_t tickAddress = 0x7F0000FA;
inline constexpr std::uint16_t tickPort = 6454;

/// What one tick does; with socket -1 nothing is sent.
void tick(int socket);
