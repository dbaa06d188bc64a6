#include "check/ProfileLoops.h"

#include "plist/Reading.h"
#include "rig/ControlDefinition.h"

#include <QSet>

#include <algorithm>

namespace {

constexpr std::size_t mostLoops = 100;

// A loop over open profiles, not a recursion: how deep profiles nest is up to the table's author.
class LoopSearch {
public:
    explicit LoopSearch(const QVariantMap& table) : table_(table) {}

    std::vector<std::vector<LoopMember>> run() {
        for (auto profile = table_.keyBegin(); profile != table_.keyEnd() && loops_.size() < mostLoops;
             ++profile) {
            open(*profile);
            while (!path_.empty() && loops_.size() < mostLoops) {
                step();
            }
        }
        return std::move(loops_);
    }

private:
    void open(const QString& profile) {
        if (!done_.contains(profile)) {
            path_.push_back({.profile = profile});
            entries_.push_back(listValue(table_.value(profile)));
            onPath_.insert(profile);
        }
    }

    void step() {
        LoopMember& last = path_.back();
        if (last.entry == entries_.back().size()) {
            close();
            return;
        }
        const QVariantMap entry = mapValue(entries_.back().at(last.entry));
        const QString nested = stringValue(entry.value(entryKeys::profile));
        if (onPath_.contains(nested)) {
            note(nested);
        } else if (table_.contains(nested) && !done_.contains(nested)) {
            open(nested); // and this entry is passed when the nested profile is done
            return;
        }
        ++last.entry;
    }

    void close() {
        done_.insert(path_.back().profile);
        onPath_.remove(path_.back().profile);
        path_.pop_back();
        entries_.pop_back();
        if (!path_.empty()) {
            ++path_.back().entry;
        }
    }

    void note(const QString& first) {
        loops_.emplace_back(std::ranges::find(path_, first, &LoopMember::profile), path_.end());
    }

    const QVariantMap& table_;
    std::vector<LoopMember> path_; ///< of open profiles, each at the entry that it has come to
    std::vector<QVariantList> entries_;
    QSet<QString> onPath_;
    QSet<QString> done_;
    std::vector<std::vector<LoopMember>> loops_;
};

} // namespace

std::vector<std::vector<LoopMember>> profileLoops(const QVariantMap& table) {
    return LoopSearch(table).run();
}
