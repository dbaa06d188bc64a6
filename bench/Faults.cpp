// Loaded into a program ahead of the C library: a disk that is slow and a universe that cannot be sent, while
// files of these names stand in the folder that FADERHALL_FAULTS names. Everything else goes on as ever.
//
//     slow-sync    every fsync and fdatasync takes four seconds
//     refusal      datagrams of universe 9 are refused

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr unsigned slowSeconds = 4;
constexpr char refusedUniverse = 9;
constexpr std::size_t universeAt = 14;

template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool isOn(const char* fault) {
    const int error = errno;
    const char* const folder = std::getenv("FADERHALL_FAULTS");
    const bool on = folder && access((std::string(folder) + "/" + fault).c_str(), F_OK) == 0;
    errno = error;
    return on;
}

bool isRefused(const void* packet, std::size_t size) {
    return size > universeAt && std::memcmp(packet, "Art-Net", 8) == 0 &&
           static_cast<const char*>(packet)[universeAt] == refusedUniverse && isOn("refusal");
}

bool isRefused(const msghdr& message) {
    return message.msg_iovlen > 0 && isRefused(message.msg_iov->iov_base, message.msg_iov->iov_len);
}

int refuse() {
    errno = EPERM;
    return -1;
}

void waitForSlowDisk() {
    if (isOn("slow-sync")) {
        sleep(slowSeconds);
    }
}

} // namespace

// Their parameters have the library's names.
extern "C" {

int fsync(int fd) {
    waitForSlowDisk();
    return next<int (*)(int)>("fsync")(fd);
}

int fdatasync(int fildes) {
    waitForSlowDisk();
    return next<int (*)(int)>("fdatasync")(fildes);
}

ssize_t sendto(int fd, const void* buf, size_t n, int flags, const sockaddr* addr, socklen_t addr_len) {
    static const auto send = next<decltype(&sendto)>("sendto");
    return isRefused(buf, n) ? refuse() : send(fd, buf, n, flags, addr, addr_len);
}

ssize_t sendmsg(int fd, const msghdr* message, int flags) {
    static const auto send = next<decltype(&sendmsg)>("sendmsg");
    return isRefused(*message) ? refuse() : send(fd, message, flags);
}

// As the system does it: what comes before the one that cannot be sent has been sent.
int sendmmsg(int fd, mmsghdr* vmessages, unsigned vlen, int flags) {
    static const auto send = next<decltype(&sendmmsg)>("sendmmsg");
    unsigned sendable = 0;
    while (sendable < vlen && !isRefused(vmessages[sendable].msg_hdr)) {
        ++sendable;
    }
    return sendable == 0 && vlen > 0 ? refuse() : send(fd, vmessages, sendable, flags);
}

} // extern "C"
