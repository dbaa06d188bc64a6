#pragma once

#include <QString>

#include <span>

struct FixtureOrder;
struct PatchedFixture;

/// Tells where the copies will stand, and what they share with the fixtures that there are; `copies` as they
/// would be patched.
QString placementNote(const FixtureOrder& order, std::span<const PatchedFixture> copies,
                      std::span<const PatchedFixture> patch);
