#include "check/RigFile.h"

#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"

#include <QFile>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

RigFile failed(int error) {
    if (error == ENOENT || error == ENOTDIR) {
        return {};
    }
    return {.state = RigFile::NotLookedAt, .reason = qt_error_string(error), .dictionary = {}};
}

RigFile damaged(const QString& reason) {
    return {.state = RigFile::Damaged, .reason = reason, .dictionary = {}};
}

} // namespace

RigFile readRigFile(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat status {};
    if (stat(name.constData(), &status) != 0 || access(name.constData(), R_OK) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return {.state = RigFile::NotLookedAt, .reason = "It is no file", .dictionary = {}};
    }
    if (static_cast<std::size_t>(status.st_size) > largestPropertyListFile) {
        return damaged("is larger than 16 MiB");
    }
    const auto bytes = readWholeFile(path, largestPropertyListFile);
    if (!bytes) {
        return failed(errno == ENOENT ? EIO : errno);
    }
    const auto root = readPropertyList(*bytes, largestPropertyListFile);
    if (!root) {
        return damaged("is no property list, or a damaged one");
    }
    if (root->typeId() != QMetaType::QVariantMap) {
        return damaged("is a property list without a dictionary at its root");
    }
    return {.state = RigFile::Read, .reason = {}, .dictionary = root->toMap()};
}
