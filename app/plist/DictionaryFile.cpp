#include "plist/DictionaryFile.h"

#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"

#include <QDateTime>
#include <QFile>
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
    if (!QFileInfo(file).isFile() || read()) {
        return true;
    }
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    const QString aside = file + QStringLiteral(".unreadable-") + stamp;
    QString name = aside;
    for (int counter = 2; QFileInfo::exists(name); ++counter) {
        name = aside + u'-' + QString::number(counter);
    }
    return QFile::rename(file, name);
}
