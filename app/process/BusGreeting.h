#pragma once

#include <QByteArray>

#include <chrono>

/// Whether the message bus at this address (D-Bus Specification, "Server Addresses") takes a connection and
/// then does not answer the greeting before the moment is there. False for a bus that answers, for one that
/// is not there, and for a transport other than a socket of this machine: nobody waits for those.
bool isSilentBus(const QByteArray& address, std::chrono::steady_clock::time_point until);
