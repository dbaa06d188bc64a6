#include "plist/PropertyList.h"

#include "plist/Gatekeeper.h"

#include <QStringDecoder>

#include <plist/plist.h>

#include <clocale>
#include <cstdlib>
#include <limits>
#include <memory>
#ifdef __APPLE__
#include <xlocale.h>
#endif

namespace {

struct NodeDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
using Node = std::unique_ptr<void, NodeDeleter>;
using Iterator = std::unique_ptr<void, MemoryDeleter>;
using Characters = std::unique_ptr<char, MemoryDeleter>;

enum class Format { xml, binary };

/// The library reads and prints reals by the thread's locale, where the decimal sign may be a comma.
class PlainNumbers {
public:
    PlainNumbers() : plain_(newlocale(LC_NUMERIC_MASK, "C", nullptr)), before_(uselocale(plain_)) {}
    ~PlainNumbers() {
        uselocale(before_);
        freelocale(plain_);
    }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    PlainNumbers(PlainNumbers&&) = delete;
    PlainNumbers& operator=(PlainNumbers&&) = delete;

private:
    locale_t plain_;
    locale_t before_;
};

QByteArray serialised(plist_t node, Format format) {
    char* written = nullptr;
    std::uint32_t length = 0;
    if (format == Format::xml) {
        plist_to_xml(node, &written, &length);
    } else {
        plist_to_bin(node, &written, &length);
    }
    const Characters owner(written);
    return {written, static_cast<qsizetype>(length)};
}

Node parsed(QByteArrayView bytes) {
    plist_t root = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (isBinaryPropertyList(bytes)) {
        plist_from_bin(bytes.data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    return Node(root);
}

// A date goes through the bytes of a list of its own: the library's accessors lose the sign of fractions
// before 2001 and every year that does not fit 32 bits of seconds.
std::optional<QVariant> readDate(plist_t node) {
    const std::optional<PropertyListDate> date = dateOfBinaryList(serialised(node, Format::binary));
    return date ? std::optional(QVariant::fromValue(*date)) : std::nullopt;
}

// Nothing when the bytes are not UTF-8: a replacement character in their place could not be told from text.
std::optional<QString> readText(QByteArrayView utf8) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(utf8);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

QByteArray carriedText(QString text) {
    return text.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter)).toUtf8();
}

std::optional<QVariant> readNode(plist_t node, Format format);

std::optional<QVariant> readArray(plist_t node, Format format) {
    plist_array_iter start = nullptr;
    plist_array_new_iter(node, &start);
    const Iterator position(start);
    QVariantList values;
    plist_t item = nullptr;
    for (plist_array_next_item(node, start, &item); item; plist_array_next_item(node, start, &item)) {
        std::optional<QVariant> value = readNode(item, format);
        if (!value) {
            return std::nullopt;
        }
        values.append(std::move(*value));
    }
    return values;
}

// XML has no element for a reference and writes a dictionary with this one key.
std::optional<PropertyListUid> uidFromXml(const QVariantMap& dictionary) {
    const QVariant number = dictionary.value(QStringLiteral("CF$UID"));
    const bool isUid = dictionary.size() == 1 && number.typeId() == QMetaType::LongLong &&
                       number.toLongLong() >= 0 && number.toLongLong() <= std::numeric_limits<quint32>::max();
    return isUid ? std::optional(PropertyListUid{number.toUInt()}) : std::nullopt;
}

std::optional<QVariant> readDictionary(plist_t node, Format format) {
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(node, &start);
    const Iterator position(start);
    QVariantMap dictionary;
    for (std::uint32_t left = plist_dict_get_size(node); left > 0; --left) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, start, &key, &item);
        const Characters owner(key);
        const std::optional<QString> name = key ? readText(key) : std::nullopt;
        std::optional<QVariant> value = readNode(item, format);
        if (!name || !value) {
            return std::nullopt;
        }
        dictionary[*name] = std::move(*value);
    }
    const auto uid = format == Format::xml ? uidFromXml(dictionary) : std::nullopt;
    return uid ? QVariant::fromValue(*uid) : QVariant(dictionary);
}

std::optional<QVariant> readString(plist_t node) {
    std::uint64_t length = 0;
    const char* const characters = plist_get_string_ptr(node, &length);
    return readText({characters, static_cast<qsizetype>(length)});
}

QByteArray readData(plist_t node) {
    std::uint64_t length = 0;
    const char* const bytes = plist_get_data_ptr(node, &length);
    return {bytes, static_cast<qsizetype>(length)};
}

// Asks a node for its value by the getter of its own type; the others leave their output as it was.
template <typename Value, typename Getter>
Value scalar(plist_t node, Getter getter) {
    Value value{};
    getter(node, &value);
    return value;
}

std::optional<QVariant> readNode(plist_t node, Format format) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        return QVariant(scalar<std::uint8_t>(node, plist_get_bool_val) != 0);
    case PLIST_UINT:
        return QVariant(static_cast<qlonglong>(scalar<std::uint64_t>(node, plist_get_uint_val)));
    case PLIST_REAL:
        return QVariant(scalar<double>(node, plist_get_real_val));
    case PLIST_STRING:
        return readString(node);
    case PLIST_DATA:
        return QVariant(readData(node));
    case PLIST_DATE:
        return readDate(node);
    case PLIST_UID:
        return QVariant::fromValue(
            PropertyListUid{static_cast<quint32>(scalar<std::uint64_t>(node, plist_get_uid_val))});
    case PLIST_ARRAY:
        return readArray(node, format);
    case PLIST_DICT:
        return readDictionary(node, format);
    default:
        return std::nullopt;
    }
}

Node newNode(const QVariant& value, int depth);
Node newNodeOfOwnType(const QVariant& value, int depth);

Node newArray(const QVariantList& values, int depth) {
    Node array(plist_new_array());
    for (const QVariant& value : values) {
        Node item = newNode(value, depth);
        if (!item) {
            return nullptr;
        }
        plist_array_append_item(array.get(), item.release());
    }
    return array;
}

Node newDictionary(const QVariantMap& values, int depth) {
    Node dictionary(plist_new_dict());
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        Node item = newNode(entry.value(), depth);
        if (!item) {
            return nullptr;
        }
        plist_dict_set_item(dictionary.get(), carriedText(entry.key()).constData(), item.release());
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

Node newInteger(const QVariant& value) {
    bool fits = true;
    if (value.typeId() == QMetaType::ULongLong) {
        fits = value.toULongLong() <= std::numeric_limits<qlonglong>::max();
    }
    return Node(fits ? plist_new_uint(static_cast<std::uint64_t>(value.toLongLong())) : nullptr);
}

// The node for a value that lies within `depth` containers; null when it has no property-list type.
Node newNode(const QVariant& value, int depth) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Node(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return newInteger(value);
    case QMetaType::Float:
    case QMetaType::Double:
        return Node(plist_new_real(value.toDouble()));
    case QMetaType::QString:
        return Node(plist_new_string(carriedText(value.toString()).constData()));
    case QMetaType::QByteArray: {
        const QByteArray data = value.toByteArray();
        return Node(plist_new_data(data.constData(), static_cast<std::uint64_t>(data.size())));
    }
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return newContainer(value, depth);
    default:
        return newNodeOfOwnType(value, depth);
    }
}

Node newNodeOfOwnType(const QVariant& value, int depth) {
    if (value.typeId() == qMetaTypeId<PropertyListDate>()) {
        return parsed(binaryListOf(value.value<PropertyListDate>()));
    }
    if (value.typeId() == qMetaTypeId<PropertyListUid>()) {
        return Node(plist_new_uid(value.value<PropertyListUid>().value));
    }
    const bool standsForArray =
        QMetaType::hasRegisteredConverterFunction(value.metaType(), QMetaType::fromType<QVariantList>());
    return standsForArray ? newContainer(value, depth) : nullptr;
}

QByteArray writePropertyList(const QVariant& value, Format format) {
    const PlainNumbers plainNumbers;
    const Node root = newNode(value, 0);
    return root ? serialised(root.get(), format) : QByteArray();
}

} // namespace

std::optional<QVariant> readPropertyList(const QByteArray& bytes, std::size_t maxBytes) {
    if (!passesGatekeeper(bytes, {.maxBytes = maxBytes})) {
        return std::nullopt;
    }
    const PlainNumbers plainNumbers;
    const Node root = parsed(bytes);
    return root ? readNode(root.get(), isBinaryPropertyList(bytes) ? Format::binary : Format::xml)
                : std::nullopt;
}

QByteArray writeXmlPropertyList(const QVariant& value) {
    return writePropertyList(value, Format::xml);
}

QByteArray writeBinaryPropertyList(const QVariant& value) {
    return writePropertyList(value, Format::binary);
}
