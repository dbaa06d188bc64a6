#include "plist/BinaryGatekeeper.h"

#include "plist/BinaryObjectTable.h"

#include <algorithm>
#include <vector>

namespace {

// Strings that are referred to again and again weigh again and again; a rig's do so a few times over.
constexpr std::uint64_t unfoldedBytesPerFileByte = 4;

/// What an object comes to with everything below it unfolded.
struct Weight {
    std::uint64_t bytes = 0;
    std::uint64_t nodes = 1;
    std::uint64_t work = 0;
    int depth = 0;
};

/// Weighs the objects from the leaves up, along a path of containers that are still open.
class Weigher {
public:
    Weigher(QByteArrayView file, const GatekeeperLimits& limits)
        : table_(file), limits_(limits), maxNodes_(static_cast<std::uint64_t>(limits.maxNodes)),
          maxBytes_(unfoldedBytesPerFileByte * limits.maxBytes) {}

    bool accepts();

private:
    struct OpenContainer {
        std::uint64_t index;
        BinaryObject object;
        Weight weight;
        std::uint64_t next = 0;
    };
    struct Known {
        std::optional<Weight> weight;
        bool isOpen = false;
        bool isString = false;
    };

    bool step();
    bool visit(std::uint64_t index);
    bool weigh(const BinaryObject& leaf, Known& known);
    bool open(std::uint64_t index, const BinaryObject& container);
    void close();
    bool add(const Known& child);
    bool isWithinLimits(const Weight& weight) const;

    BinaryObjectTable table_;
    const GatekeeperLimits& limits_;
    std::uint64_t maxNodes_;
    std::uint64_t maxBytes_;
    std::uint64_t weighedBytes_ = 0;
    std::vector<Known> known_;
    std::vector<OpenContainer> path_;
};

bool Weigher::accepts() {
    if (!table_.readTrailer(maxNodes_)) {
        return false;
    }
    known_.resize(table_.count());
    bool good = visit(table_.root());
    while (good && !path_.empty()) {
        good = step();
    }
    return good;
}

bool Weigher::step() {
    const OpenContainer& container = path_.back();
    if (container.next == container.object.references()) {
        close();
        return true;
    }
    const std::uint64_t child = table_.reference(container.object, container.next);
    if (child >= known_.size() || known_[child].isOpen) {
        return false;
    }
    return known_[child].weight ? add(known_[child]) : visit(child);
}

// An object that is met for the first time.
bool Weigher::visit(std::uint64_t index) {
    const std::optional<BinaryObject> object = table_.object(index);
    if (!object) {
        return false;
    }
    return object->isContainer() ? open(index, *object) : weigh(*object, known_[index]);
}

// Objects may lie over each other in the file; the running total bounds the reading of their characters.
bool Weigher::weigh(const BinaryObject& leaf, Known& known) {
    weighedBytes_ += leaf.bytes;
    known.isString = leaf.isString();
    known.weight = Weight{.bytes = leaf.bytes};
    return weighedBytes_ <= maxBytes_ && !(known.isString && table_.holdsNul(leaf));
}

bool Weigher::open(std::uint64_t index, const BinaryObject& container) {
    if (static_cast<int>(path_.size()) >= limits_.maxDepth) {
        return false;
    }
    const std::uint64_t keys = container.kind == BinaryObject::Kind::dictionary ? container.entries : 0;
    const Weight weight{.work = keys > 0 ? keys * (keys - 1) / 2 : 0, .depth = 1};
    known_[index].isOpen = true;
    path_.push_back({.index = index, .object = container, .weight = weight});
    return isWithinLimits(weight);
}

void Weigher::close() {
    Known& known = known_[path_.back().index];
    known.weight = path_.back().weight;
    known.isOpen = false;
    path_.pop_back();
}

// Adds a weighed child to the container at the end of the path.
bool Weigher::add(const Known& child) {
    OpenContainer& container = path_.back();
    const bool isKey =
        container.object.kind == BinaryObject::Kind::dictionary && container.next < container.object.entries;
    if (isKey && !child.isString) {
        return false;
    }
    Weight& sum = container.weight;
    sum.nodes += child.weight->nodes;
    sum.bytes += child.weight->bytes;
    sum.work += child.weight->work;
    sum.depth = std::max(sum.depth, child.weight->depth + 1);
    ++container.next;
    return isWithinLimits(sum);
}

bool Weigher::isWithinLimits(const Weight& weight) const {
    return weight.nodes <= maxNodes_ && weight.bytes <= maxBytes_ && weight.work <= limits_.maxWork &&
           weight.depth <= limits_.maxDepth;
}

} // namespace

bool passesBinaryGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits) {
    return Weigher(bytes, limits).accepts();
}
