#include "process/StartConditions.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>

#include <sys/resource.h>

namespace {

// Far more than a console uses. With fewer than some twenty the display's libraries hang or abort on the way.
constexpr rlim_t openFiles = 64;

// With less the display's libraries may hang on the way; a large rig takes more.
constexpr rlim_t addressSpaceMebibytes = 300;

bool hasAddressSpace() {
    rlimit limit{};
    return getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur >> 20 >= addressSpaceMebibytes;
}

// Names of files are texts here; the bytes of one that is none would lead somewhere else.
bool isText(const QByteArray& path) {
    return QFile::encodeName(QFile::decodeName(path)) == path;
}

bool hasOpenFiles() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= openFiles) {
        return true;
    }
    limit.rlim_cur = std::min(limit.rlim_max, openFiles);
    return setrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur == openFiles;
}

} // namespace

QString whyNotToStart() {
    for (const char* const variable : {"HOME", "XDG_CONFIG_HOME"}) {
        if (!isText(qgetenv(variable))) {
            return QString("the folder that %1 names is no UTF-8 text").arg(variable);
        }
    }
    if (!hasAddressSpace()) {
        return QString("it may not use %1 MiB of memory (ulimit -v)").arg(addressSpaceMebibytes);
    }
    return hasOpenFiles() ? QString() : QString("it may not open %1 files (ulimit -n)").arg(openFiles);
}
