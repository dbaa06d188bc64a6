#include "output/Engine.h"

#include "clock/MonotonicClock.h"

#include <algorithm>
#include <map>
#include <utility>

#include <unistd.h>

Engine::~Engine() {
    setSocket(-1);
}

// --- The console's side --------------------------------------------------------------------------------

void Engine::setPatch(Patch patch) {
    const std::lock_guard hold(lock_);
    for (const auto& fixture : patch) {
        fixture->target_ = &universes_.getUniverse(fixture->universe_);
    }
    patch_.swap(patch);
    clearUndrivenSlots();
}

void Engine::goTo(std::span<const LevelChange> changes) {
    const std::lock_guard hold(lock_);
    const std::uint64_t now = monotonicNanoseconds();
    for (const LevelChange& change : changes) {
        change.fixture->array_.goTo(change.index, change.target, change.seconds, now);
    }
}

void Engine::setSocket(int socket) {
    const std::lock_guard hold(lock_);
    if (const int before = std::exchange(socket_, socket); before >= 0) {
        ::close(before);
    }
}

void Engine::setAddress(std::uint32_t address) {
    const std::lock_guard hold(lock_);
    address_ = address;
}

void Engine::setPaused(bool paused) {
    const std::lock_guard hold(lock_);
    paused_ = paused;
}

// What a level only reads, another one may have left there: only what is written counts as driven.
void Engine::clearUndrivenSlots() {
    std::map<const DMX_Universe*, SlotSet> driven;
    for (const auto& fixture : patch_) {
        SlotSet& slots = driven[fixture->target_];
        for (std::size_t i = 0; i < fixture->array_.size(); ++i) {
            const SlotPlace place = fixture->array_.place(i);
            for (std::size_t slot = 0; slot < place.written; ++slot) {
                slots.set(place.slot + slot);
            }
        }
    }
    for (auto& [number, universe] : universes_.universes()) {
        universe.clearSlotsExcept(driven[&universe]);
    }
}

// --- What the console shows of it ----------------------------------------------------------------------

Engine::SlotLevels Engine::slotLevels(std::int32_t universe) const {
    SlotLevels levels{};
    const std::lock_guard hold(lock_);
    if (const DMX_Universe* const found = universes_.find(universe)) {
        std::ranges::copy(found->dmx(), levels.begin());
    }
    return levels;
}

std::vector<SendRecord> Engine::sendRecords() const {
    std::vector<SendRecord> records;
    const std::lock_guard hold(lock_);
    records.reserve(universes_.universes().size());
    for (const auto& [number, universe] : universes_.universes()) {
        records.push_back(universe.sendRecord());
    }
    return records;
}

bool Engine::takeNews() {
    const std::lock_guard hold(lock_);
    return std::exchange(hasNews_, false);
}

// --- The tick ------------------------------------------------------------------------------------------

void Engine::tick() {
    bool isNews = false;
    Sends sends;
    {
        const std::lock_guard hold(lock_);
        if (paused_) {
            return;
        }
        const bool changed = updateUniverses();
        sends = sendUniverses();
        isNews = changed && !std::exchange(hasNews_, true);
    }
    if (sends.any) {
        outageLog_.note(sends.error);
    }
    if (isNews && newsListener_) {
        newsListener_();
    }
}

// True when a slot changed, or a level that drives none.
bool Engine::updateUniverses() {
    const std::uint64_t now = monotonicNanoseconds();
    bool news = false;
    for (const auto& fixture : patch_) {
        const bool changed = fixture->array_.updateDMX(fixture->target_->dmx(), now);
        fixture->target_->setActive(true);
        if (changed) {
            fixture->target_->setNeedsTX(true);
        }
        news |= changed || fixture->array_.hasMoved();
    }
    return news;
}

Engine::Sends Engine::sendUniverses() {
    Sends sends;
    for (auto& [number, universe] : universes_.universes()) {
        if (universe.sendWithSocket(socket_, address_) != 0) {
            sends.any = true;
            sends.error = universe.sendRecord().error != 0 ? universe.sendRecord().error : sends.error;
        }
    }
    return sends;
}
