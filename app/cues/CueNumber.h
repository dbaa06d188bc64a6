#pragma once

#include <QString>

/// Orders two cue numbers as dotted numbers, in the shape of a sort callback: -1 when `first` comes before
/// `second`, 1 when after, 0 when they are equal. Component by component as 32-bit integers (a component
/// without digits is 0, larger numbers saturate); then the one with fewer components first; then the
/// plain text, so that different texts are never equal.
int compareCueNumbers(const QString& first, const QString& second, const void* context = nullptr);
