#pragma once

#include "output/FixtureLevels.h"
#include "rig/DMXControl.h"
#include "rig/NameStack.h"
#include "rig/ProfileExpansion.h"
#include "rig/ViewLayout.h"

#include <QRect>
#include <QString>
#include <QVariantList>

#include <memory>
#include <vector>

class Faders;
class FixtureObserver;
class Placement;
class Profiles;
struct ControlDefinition;

/// The faders of a fixture in profile order.
using FixtureControls = std::vector<std::unique_ptr<DMXControl>>;

/// One fixture: a profile placed at a universe and start address, its faders laid out in columns. Has no
/// window; whoever shows it is told of what changes in it.
class Fixture {
public:
    /// A fixture of that placement. Its faders are entered into `faders`,
    /// which has to outlive it, and their levels into `levels`. No more than `room` is expanded of its
    /// profile.
    Fixture(const Placement& placement, const Profiles& profiles, Faders& faders,
            std::shared_ptr<FixtureLevels> levels, ExpansionSize room = largestFixture);
    ~Fixture();
    Fixture(const Fixture&) = delete;
    Fixture& operator=(const Fixture&) = delete;
    Fixture(Fixture&&) = delete;
    Fixture& operator=(Fixture&&) = delete;

    QString name() const { return name_; }
    std::uint32_t universe() const { return universe_; }
    void setUniverse(std::uint32_t universe) { universe_ = universe; }
    /// 1-based, as the operator writes it.
    std::uint32_t address() const { return address_; }
    void setAddress(std::uint32_t address) { address_ = address; }
    /// Brings slots, and whoever shows the fixture, in line with a changed universe or address.
    void rescanControls();
    /// "NAME Univ: U Addr: A".
    QString title() const;

    const FixtureControls& controls() const { return controls_; }
    FixtureLevels& levels() const { return *levels_; }
    const std::shared_ptr<FixtureLevels>& sharedLevels() const { return levels_; }
    /// How much of its profile it took.
    ExpansionSize expanded() const { return expanded_; }

    /// The number that stands for "#" in names; a running count while a profile is expanded.
    std::uint32_t layerNum() const { return names_.layerNum(); }
    void setLayerNum(std::uint32_t layerNum) { names_.setLayerNum(layerNum); }
    QString resolvedName(const QString& name) const { return names_.resolvedName(name); }
    /// The first part of its faders' keys: its name and those of the profiles that are being expanded.
    QString key() const { return names_.key(); }

    // --- Layout, in pixels from the upper left corner

    QSize size() const { return layout_.size(); }
    QRect frameOf(const DMXControl& control) const { return frames_[control.index()]; }
    /// The fader that is drawn there; null beside them.
    DMXControl* controlAt(QPoint place) const;

    // --- Selection

    /// The fader that the operator worked last; null when there is none.
    DMXControl* selectedControl() const { return selectedControl_; }
    void setSelectedControl(DMXControl* control) { selectedControl_ = control; }
    /// The next fader that is no dummy, round the end to the first, or the other way; the same one when there
    /// is no other.
    DMXControl& neighbourOf(const DMXControl& control, bool backwards) const;
    /// The first or the last fader that is no dummy; null when there is none.
    DMXControl* endControl(bool last) const;

    // --- Who shows it

    /// `observer` is told from now on until it is removed, which it has to be before the fixture goes.
    void addObserver(FixtureObserver& observer);
    void removeObserver(FixtureObserver& observer);
    /// Tells of all levels that moved since this was last called.
    void tellMoved();
    void tellChanged(DMXControl& control) const;
    void tellEntryChanged(DMXControl& control) const;

private:
    void loadProfile(const QVariantList& entries, const Profiles& profiles, ExpansionSize room);
    void addLevel(const ControlDefinition& definition);
    void setControlAddresses();

    Faders& faders_;
    std::shared_ptr<FixtureLevels> levels_;
    NameStack names_;
    ViewLayout layout_;
    std::vector<QRect> frames_;
    QString name_;
    std::uint32_t address_ = 0;
    std::uint32_t universe_ = 0;
    ExpansionSize expanded_;
    FixtureControls controls_;
    DMXControl* selectedControl_ = nullptr;
    std::vector<FixtureObserver*> observers_;
};
