#include "process/HomeFolder.h"

#include <QByteArray>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr auto home = "HOME";

} // namespace

void ensureHome() {
    if (!qEnvironmentVariableIsEmpty(home)) {
        return;
    }
    if (const passwd* const user = getpwuid(getuid())) {
        qputenv(home, QByteArray(user->pw_dir));
    }
}
