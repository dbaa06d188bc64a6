#include "BenchRig.h"
#include "Floors.h"
#include "artnet/Transport.h"
#include "clock/MonotonicClock.h"
#include "controls/DMXControl.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace {

constexpr int controlsPerUniverse = 512;
constexpr int noSocket = -1;
constexpr std::uint64_t tickNanoseconds = 33'300'000;

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

void nextTick(int socket) {
    gNow += tickNanoseconds;
    tick(socket);
}

void tickIdle(benchmark::State& state) {
    const ShowClock clock;
    rigOf(static_cast<int>(state.range(0)));
    nextTick(noSocket);
    while (state.KeepRunning()) {
        nextTick(noSocket);
    }
}

void tickOneChange(benchmark::State& state, int socket) {
    const ShowClock clock;
    rigOf(static_cast<int>(state.range(0)));
    DMXControl& control = *DMXControl::controlsByName().begin()->second;
    while (state.KeepRunning()) {
        control.setValue(control.value() ^ 1U);
        nextTick(socket);
    }
}

// Every level changes with every tick; the fades are turned round before they end.
void tickAllFade(benchmark::State& state, int socket) {
    constexpr float fadeSeconds = 8;
    constexpr int ticksPerFade = 200;
    const ShowClock clock;
    rigOf(static_cast<int>(state.range(0)));
    int ticks = 0;
    while (state.KeepRunning()) {
        if (ticks++ % ticksPerFade == 0) {
            state.PauseTiming();
            for (const auto& [key, control] : DMXControl::controlsByName()) {
                control->setDMXValue(control->value() < control->max() / 2 ? control->max() : 0, fadeSeconds);
            }
            state.ResumeTiming();
        }
        nextTick(socket);
    }
}

void withSocket(benchmark::State& state, void (*measure)(benchmark::State&, int)) {
    const Floors::Receiver receiver(tickAddress, tickPort);
    const int socket = createSocket(0);
    measure(state, socket);
    ::close(socket);
}

void tickOneChangeSent(benchmark::State& state) {
    withSocket(state, tickOneChange);
}
void tickAllFadeSent(benchmark::State& state) {
    withSocket(state, tickAllFade);
}
void tickOneChangeUnsent(benchmark::State& state) {
    tickOneChange(state, noSocket);
}
void tickAllFadeUnsent(benchmark::State& state) {
    tickAllFade(state, noSocket);
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
