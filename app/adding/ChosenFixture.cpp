#include "adding/ChosenFixture.h"

#include "adding/FixtureChoices.h"
#include "adding/FixtureOrder.h"
#include "adding/ProfileUse.h"
#include "library/FixtureImport.h"
#include "patch/Patch.h"
#include "rig/Placement.h"
#include "settings/Settings.h"

#include <algorithm>

namespace {

ChosenFixture refused(const QString& refusal) {
    ChosenFixture fixture;
    fixture.refusal = refusal;
    return fixture;
}

ChosenFixture placedProfile(const QString& profile, const Profiles& profiles, const Settings& settings) {
    if (!profiles.profile(profile).isValid()) {
        return refused(QString("There is no profile “%1” any more.").arg(profile));
    }
    return {.profile = profile,
            .comingProfiles = profilesToTakeAlong(profile, profiles, settings),
            .remarks = {},
            .refusal = {},
            .profiles = profiles};
}

ChosenFixture placedMode(const ImportedMode& mode, const Profiles& profiles, const Settings& settings) {
    if (const QString name = contestedProfile(mode.profiles, profiles, settings); !name.isNull()) {
        return refused(QString("Fixtures of this rig use another profile “%1”.").arg(name));
    }
    ChosenFixture fixture{.profile = mode.profileName,
                          .comingProfiles = mode.profiles,
                          .remarks = mode.remarks,
                          .refusal = {},
                          .profiles = profiles};
    for (auto profile = mode.profiles.begin(); profile != mode.profiles.end(); ++profile) {
        fixture.profiles.setProfile(profile.key(), profile.value());
    }
    return fixture;
}

} // namespace

ChosenFixture chosenFixture(const FixtureChoice& choice, const Profiles& profiles, const Settings& settings) {
    if (!choice.profile.isNull()) {
        return placedProfile(choice.profile, profiles, settings);
    }
    const FixtureImport imported = importFixture(choice.file);
    if (!imported.refusal.isNull()) {
        return refused(imported.refusal);
    }
    const auto mode = std::ranges::find(imported.modes, choice.mode, &ImportedMode::mode);
    if (mode == imported.modes.end()) {
        return refused(QString("%1 has no mode “%2” any more.").arg(choice.file, choice.mode));
    }
    return placedMode(*mode, profiles, settings);
}

PatchedFixture patched(const ChosenFixture& fixture, const QString& name, int universe, int address,
                       int layer) {
    const FixtureOrder order{
        .profile = fixture.profile, .name = name, .universe = universe, .address = address, .layer = layer};
    return patchedFixture(Placement::fromEntry(placementsOf(order).first()), fixture.profiles);
}
