#include "plist/DictionaryFile.h"

#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"

std::optional<QVariantMap> DictionaryFile::read() const {
    const std::optional<QByteArray> bytes = readWholeFile(path_, largestPropertyListFile);
    const std::optional<QVariant> root =
        bytes ? readPropertyList(*bytes, largestPropertyListFile) : std::nullopt;
    const bool isDictionary = root && root->typeId() == QMetaType::QVariantMap;
    return isDictionary ? std::optional(root->toMap()) : std::nullopt;
}

bool DictionaryFile::write(const QVariantMap& dictionary) const {
    const QByteArray bytes = writeXmlPropertyList(dictionary);
    return passesGatekeeper(bytes) &&
           writeWholeFile(path_, bytes, read() ? OldFile::KeptAsPrevious : OldFile::KeptUnderADate);
}
