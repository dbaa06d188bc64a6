#include "BenchRig.h"
#include "Floors.h"
#include "artnet/Transport.h"
#include "clock/MonotonicClock.h"
#include "output/TickGrid.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int controlsPerUniverse = 512;
// Where the ticks are sent to: 127.0.0.250, the Art-Net port.
constexpr std::uint32_t tickAddress = 0x7F0000FA;
constexpr std::uint16_t tickPort = 6454;

// A clock that moves on with the ticks, so that fades move as they do in a show.
std::uint64_t gNow = 0;
std::uint64_t showTime() {
    return gNow;
}

class ShowClock {
public:
    ShowClock() { setMonotonicClock(showTime); }
    ~ShowClock() { setMonotonicClock(nullptr); }
    ShowClock(const ShowClock&) = delete;
    ShowClock& operator=(const ShowClock&) = delete;
};

void nextTick(BenchRig& rig) {
    gNow += tickNanoseconds;
    rig.engine().tick();
}

void tickIdle(benchmark::State& state) {
    const ShowClock clock;
    BenchRig& rig = rigOf(static_cast<int>(state.range(0)));
    nextTick(rig);
    while (state.KeepRunning()) {
        nextTick(rig);
    }
}

void tickOneChange(benchmark::State& state) {
    const ShowClock clock;
    BenchRig& rig = rigOf(static_cast<int>(state.range(0)));
    DMXControl& control = *rig.faders().sorted().front();
    while (state.KeepRunning()) {
        control.setValue(control.value() ^ 1U);
        nextTick(rig);
    }
}

// Every level changes with every tick; the fades are turned round before they end.
void tickAllFade(benchmark::State& state) {
    constexpr float fadeSeconds = 8;
    constexpr int ticksPerFade = 200;
    const ShowClock clock;
    BenchRig& rig = rigOf(static_cast<int>(state.range(0)));
    int ticks = 0;
    while (state.KeepRunning()) {
        if (ticks++ % ticksPerFade == 0) {
            state.PauseTiming();
            for (DMXControl* const control : rig.faders().sorted()) {
                control->setDMXValue(control->value() < control->max() / 2 ? control->max() : 0, fadeSeconds);
            }
            state.ResumeTiming();
        }
        nextTick(rig);
    }
}

void withSocket(benchmark::State& state, void (*measure)(benchmark::State&)) {
    const Floors::Receiver receiver(tickAddress, tickPort);
    Engine& engine = rigOf(static_cast<int>(state.range(0))).engine();
    engine.setSocket(createSocket(0));
    engine.setAddress(tickAddress);
    measure(state);
    engine.setSocket(-1);
}

void tickOneChangeSent(benchmark::State& state) {
    withSocket(state, tickOneChange);
}
void tickAllFadeSent(benchmark::State& state) {
    withSocket(state, tickAllFade);
}
void tickOneChangeUnsent(benchmark::State& state) {
    tickOneChange(state);
}
void tickAllFadeUnsent(benchmark::State& state) {
    tickAllFade(state);
}

void floorScan(benchmark::State& state) {
    Floors::Scan scan(static_cast<std::size_t>(state.range(0)) * controlsPerUniverse);
    while (state.KeepRunning()) {
        scan.run();
    }
}

void floorSend(benchmark::State& state) {
    Floors::Send send(static_cast<std::size_t>(state.range(0)));
    while (state.KeepRunning()) {
        send.run();
    }
}

void universes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(4)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(floorScan)->Apply(universes);
BENCHMARK(floorSend)->Apply(universes);
BENCHMARK(tickIdle)->Apply(universes);
BENCHMARK(tickOneChangeUnsent)->Apply(universes);
BENCHMARK(tickOneChangeSent)->Apply(universes);
BENCHMARK(tickAllFadeUnsent)->Apply(universes);
BENCHMARK(tickAllFadeSent)->Apply(universes);

} // namespace
