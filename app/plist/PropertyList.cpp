#include "plist/PropertyList.h"

#include "plist/Gatekeeper.h"
#include "plist/PlistNode.h"

#include <QHash>
#include <QStringDecoder>

#include <limits>

namespace {

using Plist::Format;
using Plist::Kind;
using Plist::Node;

/// Makes values of nodes. Keys and names that come again and again are held once.
class Reader {
public:
    explicit Reader(Format format) : format_(format) {}

    std::optional<QVariant> value(void* node);

private:
    std::optional<QVariant> array(void* node);
    std::optional<QVariant> dictionary(void* node);
    std::optional<QString> text(QByteArrayView utf8);

    Format format_;
    QHash<QByteArray, QString> texts_;
};

// A date goes through the bytes of a list of its own: the library's accessors lose the sign of fractions
// before 2001 and every year that does not fit 32 bits of seconds.
std::optional<QVariant> dateOf(void* node) {
    const std::optional<PropertyListDate> date = dateOfBinaryList(Plist::serialised(node, Format::binary));
    return date ? std::optional(QVariant::fromValue(*date)) : std::nullopt;
}

// Nothing when the bytes are not UTF-8: a replacement character in their place could not be told from text.
std::optional<QString> decoded(QByteArrayView utf8) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(utf8);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

// XML has no element for a reference and writes a dictionary with this one key.
std::optional<PropertyListUid> uidFromXml(const QVariantMap& dictionary) {
    if (dictionary.size() != 1) {
        return std::nullopt;
    }
    const QVariant number = dictionary.value(QStringLiteral("CF$UID"));
    const bool isUid = number.typeId() == QMetaType::LongLong && number.toLongLong() >= 0 &&
                       number.toLongLong() <= std::numeric_limits<quint32>::max();
    return isUid ? std::optional(PropertyListUid{number.toUInt()}) : std::nullopt;
}

std::optional<QVariant> Reader::value(void* node) {
    switch (Plist::kindOf(node)) {
    case Kind::boolean:
        return QVariant(Plist::booleanOf(node));
    case Kind::integer:
        return QVariant(qlonglong{Plist::integerOf(node)});
    case Kind::real:
        return QVariant(Plist::realOf(node));
    case Kind::string:
        return text(Plist::textOf(node));
    case Kind::data:
        return QVariant(Plist::dataOf(node).toByteArray());
    case Kind::date:
        return dateOf(node);
    case Kind::uid:
        return QVariant::fromValue(PropertyListUid{Plist::uidOf(node)});
    case Kind::array:
        return array(node);
    case Kind::dictionary:
        return dictionary(node);
    case Kind::other:
        break;
    }
    return std::nullopt;
}

std::optional<QVariant> Reader::array(void* node) {
    QVariantList values;
    const bool isWhole = Plist::everyItem(node, [&](void* item) {
        std::optional<QVariant> next = value(item);
        if (next) {
            values.append(std::move(*next));
        }
        return next.has_value();
    });
    return isWhole ? std::optional(QVariant(values)) : std::nullopt;
}

std::optional<QVariant> Reader::dictionary(void* node) {
    QVariantMap values;
    const bool isWhole = Plist::everyEntry(node, [&](QByteArrayView key, void* item) {
        const std::optional<QString> name = text(key);
        std::optional<QVariant> next = value(item);
        if (name && next) {
            values[*name] = std::move(*next);
        }
        return name && next;
    });
    if (!isWhole) {
        return std::nullopt;
    }
    const auto uid = format_ == Format::xml ? uidFromXml(values) : std::nullopt;
    return uid ? QVariant::fromValue(*uid) : QVariant(values);
}

std::optional<QString> Reader::text(QByteArrayView utf8) {
    constexpr qsizetype longestName = 64;
    if (utf8.size() > longestName) {
        return decoded(utf8);
    }
    const auto known = texts_.constFind(QByteArray::fromRawData(utf8.data(), utf8.size()));
    if (known != texts_.cend()) {
        return *known;
    }
    std::optional<QString> text = decoded(utf8);
    if (text) {
        texts_.insert(utf8.toByteArray(), *text);
    }
    return text;
}

QByteArray carriedText(QString text) {
    return text.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter)).toUtf8();
}

Node newNode(const QVariant& value, int depth);

Node newArray(const QVariantList& values, int depth) {
    Node array = Plist::newArray();
    for (const QVariant& value : values) {
        Node item = newNode(value, depth);
        if (!item) {
            return nullptr;
        }
        Plist::append(array, std::move(item));
    }
    return array;
}

Node newDictionary(const QVariantMap& values, int depth) {
    Node dictionary = Plist::newDictionary();
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        Node item = newNode(entry.value(), depth);
        if (!item) {
            return nullptr;
        }
        Plist::insert(dictionary, carriedText(entry.key()), std::move(item));
    }
    return dictionary;
}

Node newContainer(const QVariant& value, int depth) {
    if (depth >= GatekeeperLimits{}.maxDepth) {
        return nullptr;
    }
    return value.typeId() == QMetaType::QVariantMap ? newDictionary(value.toMap(), depth + 1)
                                                    : newArray(value.toList(), depth + 1);
}

Node newUnsigned(qulonglong value) {
    const bool fits = value <= std::numeric_limits<qlonglong>::max();
    return fits ? Plist::newInteger(static_cast<qlonglong>(value)) : nullptr;
}

Node newNodeOfOwnType(const QVariant& value, int depth) {
    if (value.typeId() == qMetaTypeId<PropertyListDate>()) {
        return Plist::parsed(binaryListOf(value.value<PropertyListDate>()));
    }
    if (value.typeId() == qMetaTypeId<PropertyListUid>()) {
        return Plist::newUid(value.value<PropertyListUid>().value);
    }
    const bool standsForArray =
        QMetaType::hasRegisteredConverterFunction(value.metaType(), QMetaType::fromType<QVariantList>());
    return standsForArray ? newContainer(value, depth) : nullptr;
}

// The node for a value that lies within `depth` containers; null when it has no property-list type.
Node newNode(const QVariant& value, int depth) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Plist::newBoolean(value.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return Plist::newInteger(value.toLongLong());
    case QMetaType::ULongLong:
        return newUnsigned(value.toULongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return Plist::newReal(value.toDouble());
    case QMetaType::QString:
        return Plist::newText(carriedText(value.toString()));
    case QMetaType::QByteArray:
        return Plist::newData(value.toByteArray());
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return newContainer(value, depth);
    default:
        return newNodeOfOwnType(value, depth);
    }
}

QByteArray writePropertyList(const QVariant& value, Format format) {
    const Plist::PlainNumbers plainNumbers;
    const Node root = newNode(value, 0);
    return root ? Plist::serialised(root.get(), format) : QByteArray();
}

} // namespace

std::optional<QVariant> readPropertyList(const QByteArray& bytes, std::size_t maxBytes) {
    if (!passesGatekeeper(bytes, {.maxBytes = maxBytes})) {
        return std::nullopt;
    }
    const Plist::PlainNumbers plainNumbers;
    const Node root = Plist::parsed(bytes);
    Reader reader(isBinaryPropertyList(bytes) ? Format::binary : Format::xml);
    return root ? reader.value(root.get()) : std::nullopt;
}

QByteArray writeXmlPropertyList(const QVariant& value) {
    return writePropertyList(value, Format::xml);
}

QByteArray writeBinaryPropertyList(const QVariant& value) {
    return writePropertyList(value, Format::binary);
}
