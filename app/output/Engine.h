#pragma once

#include "artnet/OutageLog.h"
#include "output/FixtureLevels.h"
#include "output/Universes.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

/// A level that is to go somewhere, by its fixture and its index there.
struct LevelChange {
    FixtureLevels* fixture = nullptr;
    std::uint32_t index = 0;
    std::uint32_t target = 0;
    float seconds = 0; ///< 0: at once
};

/// From the levels to the wire: advances fades, writes the slots, decides what is sent, and sends it. One
/// thread ticks it and the console changes it, both behind one lock that is held only for as long as a copy
/// takes. It touches no window, file, terminal or bus, so that nothing which holds those up holds up the
/// light.
///
/// What is to happen later without the console's help (delays, follows, hangs of cues) is to be armed here
/// with the levels that it brings.
class Engine {
public:
    /// The slots of one universe, DMX slot n (1..512) at index n - 1.
    using SlotLevels = std::array<std::uint8_t, DMX_Universe::slotCount>;
    using Patch = std::vector<std::shared_ptr<FixtureLevels>>;

    Engine() = default;
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    Engine(Engine&&) = delete;
    Engine& operator=(Engine&&) = delete;

    // --- The console's side. Each of these is one edit: it lands in one tick as a whole.

    /// From now on these fixtures are sent, in this order; of several in one slot the last is heard. Slots
    /// that nothing drives any more go dark, so that no lamp stays lit that no fader reaches.
    void setPatch(Patch patch);
    /// Sends every level on its way, over its time from now on.
    void goTo(std::span<const LevelChange> changes);
    /// Where datagrams go: a socket, which the engine closes in the end, -1 for none, ...
    void setSocket(int socket);
    /// ... and an IPv4 address in host order, first dotted octet in the most significant byte.
    void setAddress(std::uint32_t address);
    /// While paused, a tick does nothing.
    void setPaused(bool paused);

    // --- What the console shows of it.

    /// All dark for a universe that nobody has asked for.
    SlotLevels slotLevels(std::int32_t universe) const;
    /// What became of the sends of every universe.
    std::vector<SendRecord> sendRecords() const;
    /// `listener` is called by a tick, on its thread and without the lock, when a slot changed or a level
    /// moved; not again before takeNews(). It must not wait. To be set before the first tick.
    void setNewsListener(std::function<void()> listener) { newsListener_ = std::move(listener); }
    /// True when there is news since this was last asked.
    bool takeNews();

    // --- The tick.

    /// Brings every fixture's universe up to date and offers every universe to the socket. Allocates nothing.
    void tick();

private:
    friend class FixtureLevels;

    bool updateUniverses();
    /// What became of the sends of one tick.
    struct Sends {
        bool any = false;
        int error = 0; ///< errno of one that failed; 0 when none did
    };

    Sends sendUniverses();
    void clearUndrivenSlots();

    mutable std::mutex lock_;
    Universes universes_;
    Patch patch_;
    OutageLog outageLog_; ///< the tick's own: it prints, and so not behind the lock
    int socket_ = -1;
    std::uint32_t address_ = 0;
    bool paused_ = false;
    bool hasNews_ = false;
    std::function<void()> newsListener_;
};
