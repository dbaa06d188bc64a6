#include "plist/XmlGatekeeper.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isContainer(QByteArrayView name) {
    return name == "dict" || name == "array";
}

// These may hold comments and CDATA sections between their characters.
bool isText(QByteArrayView name) {
    return name == "string" || name == "key";
}

bool isLeaf(QByteArrayView name) {
    static constexpr std::array names{"string", "key", "integer", "real", "true", "false", "date", "data"};
    return std::ranges::any_of(names, [name](const char* leaf) { return name == leaf; });
}

/// Reads the document from front to back as the parser will. Where parsers differ in where something ends
/// (a quote in a processing instruction, a '>' in an attribute), the document is refused.
class XmlScanner {
public:
    XmlScanner(QByteArrayView document, const GatekeeperLimits& limits) : rest_(document), limits_(limits) {}

    bool accepts() { return prolog() && tree() && epilog(); }

private:
    struct Container {
        bool isDictionary;
        bool awaitsValue = false;
        std::uint64_t keys = 0;
    };

    bool prolog();
    bool epilog();
    bool tree();
    bool tag();
    bool startTag(QByteArrayView name, bool isEmpty);
    bool endTag(QByteArrayView name);
    bool admit(QByteArrayView name);
    bool open(QByteArrayView name);
    bool spend(std::uint64_t work);
    bool leafContent(QByteArrayView name);

    void skipSpace();
    bool skipSpaceAndComments();
    bool take(QByteArrayView token);
    std::optional<QByteArrayView> takeUpTo(QByteArrayView end);
    bool takeQuotedUpTo(QByteArrayView end);

    QByteArrayView rest_;
    const GatekeeperLimits& limits_;
    std::vector<Container> open_;
    int nodes_ = 0;
    std::uint64_t work_ = 0;
};

bool XmlScanner::prolog() {
    skipSpace();
    if (take("<?xml") && !takeQuotedUpTo("?>")) {
        return false;
    }
    if (!skipSpaceAndComments()) {
        return false;
    }
    if (take("<!DOCTYPE") && !takeQuotedUpTo(">")) {
        return false;
    }
    return skipSpaceAndComments() && take("<plist") && !rest_.isEmpty() &&
           (rest_.front() == '>' || isSpace(rest_.front())) && takeQuotedUpTo(">");
}

bool XmlScanner::epilog() {
    if (!skipSpaceAndComments() || !take("</plist")) {
        return false;
    }
    skipSpace();
    return take(">") && skipSpaceAndComments() && rest_.isEmpty();
}

// One value with all that lies within.
bool XmlScanner::tree() {
    do {
        if (!skipSpaceAndComments() || !tag()) {
            return false;
        }
    } while (!open_.empty());
    return true;
}

bool XmlScanner::tag() {
    if (!take("<")) {
        return false;
    }
    const std::optional<QByteArrayView> found = takeUpTo(">");
    if (!found) {
        return false;
    }
    QByteArrayView name = *found;
    const bool isEmpty = name.endsWith('/');
    if (isEmpty) {
        name.chop(1);
    }
    while (!name.isEmpty() && isSpace(name.back())) {
        name.chop(1);
    }
    return name.startsWith('/') ? !isEmpty && endTag(name.sliced(1)) : startTag(name, isEmpty);
}

bool XmlScanner::startTag(QByteArrayView name, bool isEmpty) {
    if (!admit(name)) {
        return false;
    }
    if (isContainer(name)) {
        return isEmpty ? static_cast<int>(open_.size()) < limits_.maxDepth : open(name);
    }
    return isLeaf(name) && (isEmpty ? name != "key" : leafContent(name));
}

bool XmlScanner::endTag(QByteArrayView name) {
    if (open_.empty() || open_.back().awaitsValue) {
        return false;
    }
    const bool matches = open_.back().isDictionary ? name == "dict" : name == "array";
    open_.pop_back();
    return matches;
}

// Counts a node, and holds a dictionary to a key and a value in turn.
bool XmlScanner::admit(QByteArrayView name) {
    const bool isKey = name == "key";
    if (++nodes_ > limits_.maxNodes) {
        return false;
    }
    if (open_.empty() || !open_.back().isDictionary) {
        return !isKey;
    }
    Container& dictionary = open_.back();
    if (isKey == dictionary.awaitsValue) {
        return false;
    }
    dictionary.awaitsValue = isKey;
    return !isKey || spend(dictionary.keys++);
}

bool XmlScanner::open(QByteArrayView name) {
    if (static_cast<int>(open_.size()) >= limits_.maxDepth) {
        return false;
    }
    open_.push_back({.isDictionary = name == "dict"});
    return true;
}

bool XmlScanner::spend(std::uint64_t work) {
    work_ += work;
    return work_ <= limits_.maxWork;
}

bool XmlScanner::leafContent(QByteArrayView name) {
    while (const std::optional<QByteArrayView> text = takeUpTo("<")) {
        const auto entities = static_cast<std::uint64_t>(text->count('&'));
        if (entities > 0 && !spend(entities * (static_cast<std::uint64_t>(text->size()) / 256))) {
            return false;
        }
        if (take("/")) {
            const bool matches = take(name);
            skipSpace();
            return matches && take(">");
        }
        const bool mayBeMixed = isText(name);
        const bool isComment = mayBeMixed && take("!--") && takeUpTo("-->");
        const bool isCharacterData = mayBeMixed && !isComment && take("![CDATA[") && takeUpTo("]]>");
        if (!isComment && !isCharacterData) {
            return false;
        }
    }
    return false;
}

void XmlScanner::skipSpace() {
    const auto* const first = std::ranges::find_if_not(rest_, isSpace);
    rest_ = rest_.sliced(first - rest_.begin());
}

bool XmlScanner::skipSpaceAndComments() {
    skipSpace();
    while (take("<!--")) {
        if (!takeUpTo("-->")) {
            return false;
        }
        skipSpace();
    }
    return true;
}

bool XmlScanner::take(QByteArrayView token) {
    const bool found = rest_.startsWith(token);
    if (found) {
        rest_ = rest_.sliced(token.size());
    }
    return found;
}

// The text before the next `end`; what follows `end` is read next.
std::optional<QByteArrayView> XmlScanner::takeUpTo(QByteArrayView end) {
    const qsizetype length = rest_.indexOf(end);
    if (length < 0) {
        return std::nullopt;
    }
    const QByteArrayView text = rest_.first(length);
    rest_ = rest_.sliced(length + end.size());
    return text;
}

// As above, for what may hold quoted text: no `end` within quotes, no markup, no internal subset.
bool XmlScanner::takeQuotedUpTo(QByteArrayView end) {
    const std::optional<QByteArrayView> text = takeUpTo(end);
    return text && std::ranges::count(*text, '"') % 2 == 0 && !text->contains('<') && !text->contains('[');
}

} // namespace

bool passesXmlGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits) {
    return !bytes.contains('\0') && XmlScanner(bytes, limits).accepts();
}
