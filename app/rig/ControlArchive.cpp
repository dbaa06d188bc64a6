#include "rig/ControlArchive.h"

#include "plist/PropertyList.h"
#include "plist/Reading.h"

#include <QVariantMap>

namespace {

constexpr std::size_t mostBytes = std::size_t{64} * 1024;
constexpr QLatin1StringView archiverName("NSKeyedArchiver");
constexpr qlonglong archiveVersion = 100000;

QVariant reference(quint32 index) {
    return QVariant::fromValue(PropertyListUid{.value = index});
}

// What a reference leads to; nothing for a value that is none, one to the null object, which stands first,
// or one that leads outside the table.
QVariant dereferenced(const QVariantList& objects, const QVariant& uid) {
    if (!uid.canConvert<PropertyListUid>()) {
        return {};
    }
    const quint32 index = uid.value<PropertyListUid>().value;
    return index > 0 && index < objects.size() ? objects.at(index) : QVariant();
}

bool isArray(const QVariantList& objects, const QVariantMap& object) {
    const QVariantMap archivedClass = dereferenced(objects, object.value("$class")).toMap();
    return archivedClass.value("$classes").toList().contains("NSArray");
}

bool hasIntegerValue(const QVariant& object) {
    const int type = object.typeId();
    return type == QMetaType::QString || type == QMetaType::LongLong || type == QMetaType::Double ||
           type == QMetaType::Bool;
}

} // namespace

QByteArray archiveLevel(int value) {
    const QVariantMap arrayClass{{"$classname", "NSArray"},
                                 {"$classes", QVariantList{"NSArray", "NSObject"}}};
    const QVariantMap array{{"NS.objects", QVariantList{reference(2)}}, {"$class", reference(3)}};
    return writeBinaryPropertyList(QVariantMap{
        {"$archiver", QString(archiverName)},
        {"$version", archiveVersion},
        {"$top", QVariantMap{{"root", reference(1)}}},
        {"$objects", QVariantList{"$null", array, QString::number(value), arrayClass}},
    });
}

std::optional<int> unarchiveLevel(const QByteArray& bytes) {
    const QVariantMap archive = readPropertyList(bytes, mostBytes).value_or(QVariant()).toMap();
    if (archive.value("$archiver").toString() != archiverName) {
        return {};
    }
    const QVariantList objects = archive.value("$objects").toList();
    const QVariantMap array = dereferenced(objects, archive.value("$top").toMap().value("root")).toMap();
    const QVariantList elements = array.value("NS.objects").toList();
    if (!isArray(objects, array) || elements.isEmpty()) {
        return {};
    }
    const QVariant first = dereferenced(objects, elements.first());
    return hasIntegerValue(first) ? std::optional(integerValue(first)) : std::nullopt;
}
