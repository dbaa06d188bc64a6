#pragma once

#include <QString>

#include <span>

class Report;
struct PatchedFixture;

/// Adds what is wrong with how the fixtures stand together: faders past the end of their universe, slots that
/// several fixtures drive, universes that leave under the same number, and faders that share a key. `place`
/// is put before each place.
void checkPatch(std::span<const PatchedFixture> patch, const QString& place, Report& report);

/// "fixture 2 'Spot'", counted from 1; "fixture 2" without a name.
QString fixtureAt(std::size_t index, const QString& name);
