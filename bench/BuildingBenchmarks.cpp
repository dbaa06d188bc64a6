#include "BenchRig.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <fstream>
#include <memory>
#include <vector>

namespace {

// 0 where the system does not tell.
double residentMegabytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    double residentPages = 0;
    file >> pages >> residentPages;
    return residentPages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void buildFullRig(benchmark::State& state) {
    releaseRig();
    while (state.KeepRunning()) {
        const auto rig = std::make_unique<BenchRig>(256);
        state.PauseTiming(); // its end is not part of it
        benchmark::DoNotOptimize(rig.get());
        state.ResumeTiming();
    }
}

// What the program holds in memory while a full rig stands, its windows not mapped.
void holdFullRig(benchmark::State& state) {
    releaseRig();
    while (state.KeepRunning()) {
        const auto rig = std::make_unique<BenchRig>(256);
        state.counters["resident_MB"] = residentMegabytes();
    }
}

// The windows of one rig go, those of another come.
void switchRigOfFortyFixtures(benchmark::State& state) {
    constexpr int fixtures = 40;
    constexpr int controlsEach = 20;
    releaseRig();
    auto rig = std::make_unique<BenchRig>(fixtures, controlsEach);
    while (state.KeepRunning()) {
        rig.reset();
        rig = std::make_unique<BenchRig>(fixtures, controlsEach);
    }
}

void restoreEveryLevel(benchmark::State& state) {
    Faders& faders = rigOf(256).faders();
    QStringList keys;
    for (const DMXControl* const control : faders.sorted()) {
        keys.append(control->key());
    }
    while (state.KeepRunning()) {
        for (const QString& key : keys) {
            faders.setControl(key, 100, 0);
        }
    }
}

// What a cue does once its records are found.
void setEveryLevel(benchmark::State& state) {
    const Faders& faders = rigOf(256).faders();
    std::uint32_t level = 0;
    while (state.KeepRunning()) {
        ++level;
        std::vector<FaderChange> changes;
        changes.reserve(faders.count());
        for (DMXControl* const control : faders.sorted()) {
            changes.push_back({.fader = control, .value = level % 2, .time = 0});
        }
        Faders::setDMXValues(changes);
    }
}

BENCHMARK(holdFullRig)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(buildFullRig)->Unit(benchmark::kMillisecond);
BENCHMARK(switchRigOfFortyFixtures)->Unit(benchmark::kMillisecond);
BENCHMARK(setEveryLevel)->Unit(benchmark::kMillisecond);
BENCHMARK(restoreEveryLevel)->Unit(benchmark::kMillisecond);

} // namespace
