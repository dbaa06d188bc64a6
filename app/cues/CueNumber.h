#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVarLengthArray>

/// The components of a cue number, which points part, as 32-bit integers: one without digits is 0, larger
/// numbers saturate.
using CueNumberComponents = QVarLengthArray<int, 4>;
CueNumberComponents cueNumberComponents(QStringView number);

/// Orders two cue numbers as dotted numbers, in the shape of a sort callback: -1 when `first` comes before
/// `second`, 1 when after, 0 when they are equal. Component by component; then the one with fewer components
/// first; then the plain text, so that different texts are never equal.
int compareCueNumbers(const QString& first, const QString& second, const void* context = nullptr);

/// The numbers in ascending order.
QStringList sortedCueNumbers(const QStringList& numbers);
