#pragma once

#include "plist/Gatekeeper.h"

/// The gatekeeper for XML: one <plist> with one value, tags in balance, keys and values of a dictionary in
/// turn, no NUL byte, no internal document type and with it no entity declaration, nesting, nodes and
/// dictionary sizes within the limits. Does not look at the size in bytes.
bool passesXmlGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits);
