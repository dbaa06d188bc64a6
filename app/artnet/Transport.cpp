#include "artnet/Transport.h"

#include "artnet/SocketAddress.h"
#include "print/Print.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>
#include <string>

namespace {

void bindToPort(int socket, std::uint16_t port) {
    const sockaddr_in local = socketAddress(INADDR_ANY, port);
    const int result = bind(socket, reinterpret_cast<const sockaddr*>(&local), sizeof local);
    if (result != 0) {
        printLine("      bind returned " + std::to_string(result));
    }
}

void allowBroadcast(int socket) {
    const int on = 1;
    const int result = setsockopt(socket, SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    if (result != 0) {
        const int error = errno;
        printLine("      setsockopt(SO_BROADCAST) returned " + std::to_string(result));
        printLine("        errno = " + std::to_string(error));
    }
}

/// With the send buffer full (a stalled interface), a sendto() without flags would wait for room and hold up
/// the faders with it. A dropped datagram is made up for by the next one.
void neverWait(int socket) {
    fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
}

/// Room for 256 universes in one tick: with the system's bookkeeping a datagram counts for some 1.3 kB, and
/// about 160 fit into what Linux gives a socket by itself. Linux takes the number for half of what it gives,
/// and gives no more than its administrator allows.
void makeRoom(int socket) {
    const int bytes = 256 * 1024;
    setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

} // namespace

int createSocket(std::uint16_t port) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    if (socket < 0) {
        printLine("    Error opening UDP socket! (" + std::to_string(errno) + ")");
        return -1;
    }
    if (port != 0) {
        bindToPort(socket, port);
    }
    allowBroadcast(socket);
    neverWait(socket);
    makeRoom(socket);
    return socket;
}
