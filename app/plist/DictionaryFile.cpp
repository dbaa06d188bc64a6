#include "plist/DictionaryFile.h"

#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"

std::optional<QVariantMap> DictionaryFile::read() const {
    const std::optional<QByteArray> bytes = readWholeFile(path_, largestPropertyListFile);
    const std::optional<QVariant> root =
        bytes ? readPropertyList(*bytes, largestPropertyListFile) : std::nullopt;
    if (!root || root->typeId() != QMetaType::QVariantMap) {
        return std::nullopt;
    }
    readableContent_ = qHash(*bytes);
    return root->toMap();
}

bool DictionaryFile::write(const QVariantMap& dictionary) const {
    const QByteArray bytes = writeXmlPropertyList(dictionary);
    if (!passesGatekeeper(bytes) ||
        !writeWholeFile(path_, bytes, isReadable() ? OldFile::KeptAsPrevious : OldFile::KeptUnderADate)) {
        return false;
    }
    readableContent_ = qHash(bytes);
    return true;
}

bool DictionaryFile::isReadable() const {
    const std::optional<QByteArray> bytes = readWholeFile(path_, largestPropertyListFile);
    const bool isKnown = bytes && readableContent_ == qHash(*bytes);
    return isKnown || read();
}
