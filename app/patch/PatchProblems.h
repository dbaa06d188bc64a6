#pragma once

#include <QString>

#include <span>
#include <vector>

struct PatchedFixture;

/// For every fixture of the patch what is wrong with its place, in sentences for the operator, a line each:
/// whom it overlaps in which slots, and which of its slots lie outside the universe. Null where nothing is.
/// Of very many overlaps the first few are named.
std::vector<QString> patchProblems(std::span<const PatchedFixture> patch);
