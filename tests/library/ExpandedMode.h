#pragma once

#include <QStringList>

struct ImportedMode;

/// What a mode's profile comes to in a fixture "F" with layer number 1.
struct ExpandedMode {
    /// Each entry as its key without the fixture, its slots from 1 and the level it rests at ("Pan 1-2 =
    /// 32768"), or "blank" and its slots, "label" and its text, "column" for what only begins one.
    QStringList lines;
    QStringList keys; ///< of the faders
    int slotCount = 0;
};

ExpandedMode expanded(const ImportedMode& mode);
