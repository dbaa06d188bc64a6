#pragma once

#include "plist/Gatekeeper.h"

/// The gatekeeper for binary lists: trailer, offset table and every reference in range, no cycle, keys are
/// strings, no string with a NUL in it; nesting, nodes and dictionary sizes of the unfolded tree within the
/// limits, its strings and data together at most four times as large as a file may be. Works without
/// recursion and looks at each object once.
bool passesBinaryGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits);
