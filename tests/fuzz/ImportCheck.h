#pragma once

struct FixtureReading;

/// Aborts unless every mode that was read becomes profiles that come to the mode's slots, with a key of its
/// own for every fader, and that a settings file gives back as they are.
void checkImport(const FixtureReading& reading);
