#include "rig/Faders.h"

#include "plist/Reading.h"
#include "print/Print.h"
#include "rig/Fixture.h"

#include <algorithm>
#include <functional>

void Faders::add(DMXControl& fader) {
    if (byKey_.contains(fader.key())) {
        printLine(QString("DMXControl '%1' already exists!").arg(fader.key()).toStdString());
    }
    put(fader);
}

void Faders::put(DMXControl& fader) {
    if (!fader.key().isNull()) {
        byKey_.insert(fader.key(), &fader);
        isSorted_ = false;
    }
}

bool Faders::remove(const DMXControl& fader) {
    const auto found = byKey_.constFind(fader.key());
    if (found == byKey_.constEnd() || *found != &fader) {
        return false;
    }
    byKey_.erase(found);
    isSorted_ = false;
    return true;
}

void Faders::clear() {
    byKey_.clear();
    isSorted_ = false;
}

const std::vector<DMXControl*>& Faders::sorted() const {
    if (!isSorted_) {
        sorted_.assign(byKey_.cbegin(), byKey_.cend());
        std::ranges::sort(sorted_, std::less(), &DMXControl::key);
        isSorted_ = true;
    }
    return sorted_;
}

void Faders::setControl(const QString& key, const QVariant& toValue, const QVariant& time) const {
    if (DMXControl* const fader = find(key)) {
        fader->setDMXValue(unsignedValue(toValue), floatValue(time));
    }
}

void Faders::setDMXValues(std::span<const FaderChange> changes) {
    std::vector<LevelChange> levels;
    levels.reserve(changes.size());
    for (const auto& [fader, value, time] : changes) {
        fader->setTime(time);
        levels.push_back({.fixture = &fader->fixture_.levels(),
                          .index = fader->index(),
                          .target = value,
                          .seconds = time});
    }
    if (levels.empty()) {
        return;
    }
    levels.front().fixture->engine().goTo(levels);
    // Those of a fixture mostly stand one after the other.
    const Fixture* told = nullptr;
    for (const FaderChange& change : changes) {
        if (&change.fader->fixture() != told) {
            told = &change.fader->fixture();
            change.fader->fixture_.tellMoved();
        }
    }
}
