#include "rig/ProfileExpansion.h"

#include "plist/Reading.h"
#include "print/Print.h"
#include "rig/ControlDefinition.h"
#include "rig/NameStack.h"
#include "rig/Profiles.h"

#include <QSet>

#include <vector>

namespace {

qsizetype charactersOf(const QVariantMap& entry) {
    return stringValue(entry.value(entryKeys::profile)).size() +
           stringValue(entry.value(entryKeys::name)).size() +
           stringValue(entry.value(entryKeys::label)).size();
}

class Expansion {
public:
    Expansion(const Profiles& profiles, NameStack& names,
              const std::function<void(const QVariantMap&)>& addControl, ExpansionSize limit,
              const std::function<void(const ExpansionFault&)>& faulty)
        : profiles_(profiles), names_(names), addControl_(addControl), limit_(limit), faulty_(faulty) {}

    // A loop over open profiles, not a recursion: how deep profiles nest is up to the table's author.
    ExpansionSize run(const QVariantList& entries) {
        open_.push_back({.profile = {}, .entries = entries, .named = false});
        while (!open_.empty()) {
            OpenProfile& innermost = open_.back();
            if (innermost.next == innermost.entries.size()) {
                close();
            } else if (!take(innermost.entries.at(innermost.next++))) {
                break;
            }
        }
        while (!open_.empty()) {
            close();
        }
        return size_;
    }

private:
    struct OpenProfile {
        QString profile;
        QVariantList entries;
        bool named;
        qsizetype next = 0;
    };

    bool take(const QVariant& value) {
        if (size_.entries >= limit_.entries || size_.characters > limit_.characters) {
            faulty_({.kind = ExpansionFault::TooLarge, .profile = {}});
            return false;
        }
        ++size_.entries;
        if (value.typeId() != QMetaType::QVariantMap) {
            return true;
        }
        const QVariantMap entry = value.toMap();
        size_.characters += charactersOf(entry);
        if (entry.contains(entryKeys::profile)) {
            open(entry);
        } else {
            add(entry);
        }
        return true;
    }

    void add(const QVariantMap& entry) {
        size_.characters += names_.key().size();
        addControl_(entry);
    }

    void open(const QVariantMap& entry) {
        const QString profile = stringValue(entry.value(entryKeys::profile));
        if (openNames_.contains(profile)) {
            faulty_({.kind = ExpansionFault::ContainsItself, .profile = profile});
            return;
        }
        const QString name = names_.resolvedName(stringValue(entry.value(entryKeys::name)));
        if (!name.isNull()) {
            names_.push(name);
        }
        openNames_.insert(profile);
        open_.push_back(
            {.profile = profile, .entries = profiles_.profileWithName(profile), .named = !name.isNull()});
    }

    void close() {
        if (open_.back().named) {
            names_.pop();
        }
        openNames_.remove(open_.back().profile);
        open_.pop_back();
    }

    const Profiles& profiles_;
    NameStack& names_;
    const std::function<void(const QVariantMap&)>& addControl_;
    ExpansionSize limit_;
    const std::function<void(const ExpansionFault&)>& faulty_;
    ExpansionSize size_;
    std::vector<OpenProfile> open_;
    QSet<QString> openNames_;
};

} // namespace

void printFault(const ExpansionFault& fault) {
    if (fault.kind == ExpansionFault::ContainsItself) {
        printLine(QString("Profile '%1' contains itself!").arg(fault.profile).toStdString());
    } else {
        printLine("Profile expansion stopped: it adds more than any fixture or rig has");
    }
}

ExpansionSize expandProfile(const QVariantList& entries, const Profiles& profiles, NameStack& names,
                            const std::function<void(const QVariantMap&)>& addControl, ExpansionSize limit,
                            const std::function<void(const ExpansionFault&)>& faulty) {
    return Expansion(profiles, names, addControl, limit, faulty).run(entries);
}
