#include "plist/PlistNode.h"

#include "plist/Gatekeeper.h"

#include <plist/plist.h>

#include <clocale>
#include <cstdlib>
#ifdef __APPLE__
#include <xlocale.h>
#endif

namespace Plist {

namespace {

struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
using Iterator = std::unique_ptr<void, MemoryDeleter>;
using Characters = std::unique_ptr<char, MemoryDeleter>;

// Asks a node for its value by the getter of its own type; the others leave their output as it was.
template <typename Value, typename Getter>
Value scalar(plist_t node, Getter getter) {
    Value value{};
    getter(node, &value);
    return value;
}

template <typename Getter>
QByteArrayView bytesOf(plist_t node, Getter getter) {
    std::uint64_t length = 0;
    const char* const bytes = getter(node, &length);
    return {bytes, static_cast<qsizetype>(length)};
}

} // namespace

void NodeDeleter::operator()(void* node) const {
    plist_free(node);
}

struct PlainNumbers::Locales {
    locale_t plain;
    locale_t before;
};

PlainNumbers::PlainNumbers() : locales_(std::make_unique<Locales>()) {
    locales_->plain = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    locales_->before = uselocale(locales_->plain);
}

PlainNumbers::~PlainNumbers() {
    uselocale(locales_->before);
    freelocale(locales_->plain);
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

QByteArray serialised(void* node, Format format) {
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

Kind kindOf(void* node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        return Kind::boolean;
    case PLIST_UINT:
        return Kind::integer;
    case PLIST_REAL:
        return Kind::real;
    case PLIST_STRING:
        return Kind::string;
    case PLIST_DATA:
        return Kind::data;
    case PLIST_DATE:
        return Kind::date;
    case PLIST_UID:
        return Kind::uid;
    case PLIST_ARRAY:
        return Kind::array;
    case PLIST_DICT:
        return Kind::dictionary;
    default:
        return Kind::other;
    }
}

bool booleanOf(void* node) {
    return scalar<std::uint8_t>(node, plist_get_bool_val) != 0;
}

std::int64_t integerOf(void* node) {
    return static_cast<std::int64_t>(scalar<std::uint64_t>(node, plist_get_uint_val));
}

double realOf(void* node) {
    return scalar<double>(node, plist_get_real_val);
}

std::uint32_t uidOf(void* node) {
    return static_cast<std::uint32_t>(scalar<std::uint64_t>(node, plist_get_uid_val));
}

QByteArrayView textOf(void* node) {
    return bytesOf(node, plist_get_string_ptr);
}

QByteArrayView dataOf(void* node) {
    return bytesOf(node, plist_get_data_ptr);
}

bool everyItem(void* array, const std::function<bool(void* item)>& take) {
    plist_array_iter start = nullptr;
    plist_array_new_iter(array, &start);
    const Iterator position(start);
    plist_t item = nullptr;
    for (plist_array_next_item(array, start, &item); item; plist_array_next_item(array, start, &item)) {
        if (!take(item)) {
            return false;
        }
    }
    return true;
}

bool everyEntry(void* dictionary, const std::function<bool(QByteArrayView key, void* item)>& take) {
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(dictionary, &start);
    const Iterator position(start);
    for (std::uint32_t left = plist_dict_get_size(dictionary); left > 0; --left) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dictionary, start, &key, &item);
        const Characters owner(key);
        if (!key || !take(key, item)) {
            return false;
        }
    }
    return true;
}

Node newBoolean(bool value) {
    return Node(plist_new_bool(value ? 1 : 0));
}

Node newInteger(std::int64_t value) {
    return Node(plist_new_uint(static_cast<std::uint64_t>(value)));
}

Node newReal(double value) {
    return Node(plist_new_real(value));
}

Node newUid(std::uint32_t value) {
    return Node(plist_new_uid(value));
}

Node newText(const QByteArray& text) {
    return Node(plist_new_string(text.constData()));
}

Node newData(const QByteArray& data) {
    return Node(plist_new_data(data.constData(), static_cast<std::uint64_t>(data.size())));
}

Node newArray() {
    return Node(plist_new_array());
}

Node newDictionary() {
    return Node(plist_new_dict());
}

void append(const Node& array, Node item) {
    plist_array_append_item(array.get(), item.release());
}

void insert(const Node& dictionary, const QByteArray& key, Node item) {
    plist_dict_set_item(dictionary.get(), key.constData(), item.release());
}

} // namespace Plist
