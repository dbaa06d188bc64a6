#include "process/SessionBus.h"

#include "process/BusGreeting.h"

#include <QtGlobal>

namespace {

constexpr auto sessionVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr auto accessibilityVariable = "AT_SPI_BUS_ADDRESS";

// Where a connection fails at once.
constexpr auto noBus = "unix:path=/dev/null";

QByteArray sessionAddress() {
    if (QByteArray address = qgetenv(sessionVariable); !address.isEmpty()) {
        return address;
    }
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : "unix:path=" + (folder + "/bus").toPercentEncoding("/");
}

} // namespace

SessionBus::SessionBus(std::chrono::milliseconds limit) {
    const auto until = std::chrono::steady_clock::now() + limit;
    ask(sessionVariable, sessionAddress(), until);
    ask(accessibilityVariable, qgetenv(accessibilityVariable), until);
}

void SessionBus::ask(const char* variable, const QByteArray& address,
                     std::chrono::steady_clock::time_point until) {
    if (!address.isEmpty()) {
        // Deferred where no thread is to be had: asked while it is waited for.
        questions_.push_back({.variable = variable,
                              .isSilent = std::async(std::launch::async | std::launch::deferred, isSilentBus,
                                                     address, until)});
    }
}

void SessionBus::giveUpIfSilent() {
    for (Question& question : questions_) {
        if (question.isSilent.get()) {
            qputenv(question.variable, noBus);
        }
    }
    questions_.clear();
}
