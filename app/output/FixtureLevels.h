#pragma once

#include "levels/LevelArray.h"

#include <cstdint>
#include <mutex>
#include <span>

class DMX_Universe;
class Engine;

/// The levels of one fixture as the console and the output share them. The console changes them whenever it
/// likes, each time holding the engine's lock for as long as that takes; they go out once the fixture is part
/// of the engine's patch.
class FixtureLevels {
public:
    /// Access to the levels, which the output waits for meanwhile: not to be kept.
    class Held {
    public:
        explicit Held(FixtureLevels& levels);
        LevelArray* operator->() { return &array_; }
        LevelArray& operator*() { return array_; }

    private:
        std::lock_guard<std::mutex> lock_;
        LevelArray& array_;
    };

    /// `engine` has to outlive the levels.
    explicit FixtureLevels(Engine& engine) : engine_(engine) {}

    Held held() { return Held(*this); }
    Engine& engine() { return engine_; }

    /// Gives all levels other slots, in another universe perhaps, in one edit: no datagram shows half of it.
    /// What the fixture drove and nothing drives any more goes dark. There is a place for each level.
    void setPlaces(std::int32_t universe, std::span<const SlotPlace> places);

private:
    friend class Engine;

    Engine& engine_;
    LevelArray array_;
    std::int32_t universe_ = 0;
    DMX_Universe* target_ = nullptr; ///< once it is part of the patch
};
