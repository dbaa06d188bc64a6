#include "BenchRig.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "settings/Settings.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int fullRig = 256; // universes: 131,072 controls

// A cue table over the full rig in which every control has a record.
class FullCues {
public:
    FullCues()
        : faders_(rigOf(fullRig).faders()), settings_(QVariantMap()), store_(settings_, faders_),
          stepper_(store_, faders_) {
        for (DMXControl* const control : faders_.sorted()) {
            control->setDMXValue(100, 0);
        }
        for (const char* const number : {"1", "2"}) {
            store_.create(number);
            store_.store(number);
        }
    }

    CueStore& store() { return store_; }
    CueStepper& stepper() { return stepper_; }

private:
    Faders& faders_;
    Settings settings_;
    CueStore store_;
    CueStepper stepper_;
};

void executeCue(benchmark::State& state) {
    FullCues cues;
    const QVariant entry = cues.store().entry("1");
    while (state.KeepRunning()) {
        cues.stepper().executeCue(entry);
    }
}

void storeCue(benchmark::State& state) {
    FullCues cues;
    while (state.KeepRunning()) {
        cues.store().store("1");
    }
}

void nextCue(benchmark::State& state) {
    FullCues cues;
    while (state.KeepRunning()) {
        cues.stepper().next();
    }
}

// A control's place in the registry, its key and its level: every cue command has to go there.
void floorWalk(benchmark::State& state) {
    const Faders& faders = rigOf(fullRig).faders();
    while (state.KeepRunning()) {
        for (const DMXControl* const control : faders.sorted()) {
            benchmark::DoNotOptimize(control->key().size() + control->value());
        }
    }
}

BENCHMARK(floorWalk)->Unit(benchmark::kMillisecond);
BENCHMARK(executeCue)->Unit(benchmark::kMillisecond);
BENCHMARK(storeCue)->Unit(benchmark::kMillisecond);
BENCHMARK(nextCue)->Unit(benchmark::kMillisecond);

} // namespace
