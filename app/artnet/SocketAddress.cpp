#include "artnet/SocketAddress.h"

sockaddr_in socketAddress(std::uint32_t address, std::uint16_t port) {
    sockaddr_in result{};
#ifdef __APPLE__
    result.sin_len = sizeof result;
#endif
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    result.sin_addr.s_addr = htonl(address);
    return result;
}
