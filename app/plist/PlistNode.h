#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <functional>
#include <memory>

/// The values of the property-list library as a tree of nodes. Their source is the one file that knows the
/// library; what a node means is PropertyList's to tell.
namespace Plist {

struct NodeDeleter {
    void operator()(void* node) const;
};
/// Owns a node and all below it. Null stands for what cannot be read or written.
using Node = std::unique_ptr<void, NodeDeleter>;

enum class Kind { boolean, integer, real, string, data, date, uid, array, dictionary, other };
enum class Format { xml, binary };

/// While one lives, this thread reads and writes numbers with a decimal point; the library goes by its
/// locale, where the decimal sign may be a comma.
class PlainNumbers {
public:
    PlainNumbers();
    ~PlainNumbers();
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    PlainNumbers(PlainNumbers&&) = delete;
    PlainNumbers& operator=(PlainNumbers&&) = delete;

private:
    struct Locales;
    std::unique_ptr<Locales> locales_;
};

/// The bytes have passed the gatekeeper.
Node parsed(QByteArrayView bytes);
QByteArray serialised(void* node, Format format);

Kind kindOf(void* node);
/// Each to be asked of a node of its own kind; what they view lives as long as the node.
bool booleanOf(void* node);
std::int64_t integerOf(void* node);
double realOf(void* node);
std::uint32_t uidOf(void* node);
QByteArrayView textOf(void* node);
QByteArrayView dataOf(void* node);
/// Goes on as long as it is answered true, and says whether it came to the end.
bool everyItem(void* array, const std::function<bool(void* item)>& take);
bool everyEntry(void* dictionary, const std::function<bool(QByteArrayView key, void* item)>& take);

Node newBoolean(bool value);
Node newInteger(std::int64_t value);
Node newReal(double value);
Node newUid(std::uint32_t value);
/// Text is UTF-8 without a NUL.
Node newText(const QByteArray& text);
Node newData(const QByteArray& data);
Node newArray();
Node newDictionary();
void append(const Node& array, Node item);
void insert(const Node& dictionary, const QByteArray& key, Node item);

} // namespace Plist
