#include "plist/DictionaryFile.h"

#include "plist/Gatekeeper.h"
#include "plist/MoveAside.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"

#include <QFileInfo>

std::optional<QVariantMap> DictionaryFile::read() const {
    const std::optional<QByteArray> bytes = readWholeFile(path_, largestPropertyListFile);
    const std::optional<QVariant> root =
        bytes ? readPropertyList(*bytes, largestPropertyListFile) : std::nullopt;
    const bool isDictionary = root && root->typeId() == QMetaType::QVariantMap;
    return isDictionary ? std::optional(root->toMap()) : std::nullopt;
}

bool DictionaryFile::write(const QVariantMap& dictionary) const {
    const QByteArray bytes = writeXmlPropertyList(dictionary);
    return passesGatekeeper(bytes) && moveUnreadableAside() &&
           writeWholeFile(path_, bytes, OldFile::KeptAsPrevious);
}

// False when such a file could not be moved. What is no file at all is left to the writer to refuse.
bool DictionaryFile::moveUnreadableAside() const {
    const QString file = followLinks(path_);
    return !QFileInfo(file).isFile() || read() || moveAside(file, "unreadable");
}
