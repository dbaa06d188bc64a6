#include "BenchRig.h"
#include "Floors.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// One window of as many visible faders.
class VisibleFaders {
public:
    explicit VisibleFaders(int faderCount) {
        releaseRig();
        rig_ = std::make_unique<BenchRig>(1, faderCount);
        rig_->showWindows(true);
    }

    // Every fader shows another level than before.
    void moveAll(std::uint32_t step) const {
        for (DMXControl* const control : rig_->faders().sorted()) {
            control->setDMXValue(step % 2 == 0 ? 100 : 101, 0);
        }
    }

private:
    std::unique_ptr<BenchRig> rig_;
};

// The time in the event loop that a tick's redrawing takes.
void drawMovingFaders(benchmark::State& state) {
    const VisibleFaders faders(static_cast<int>(state.range(0)));
    std::uint32_t step = 0;
    while (state.KeepRunning()) {
        state.PauseTiming();
        faders.moveAll(++step);
        state.ResumeTiming();
        QApplication::processEvents();
    }
}

// What it takes to ask for that redrawing.
void moveVisibleFaders(benchmark::State& state) {
    const VisibleFaders faders(static_cast<int>(state.range(0)));
    std::uint32_t step = 0;
    while (state.KeepRunning()) {
        faders.moveAll(++step);
        state.PauseTiming();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

void floorFill(benchmark::State& state) {
    Floors::Fill faders(static_cast<int>(state.range(0)));
    faders.show();
    QApplication::processEvents();
    while (state.KeepRunning()) {
        faders.update();
        QApplication::processEvents();
    }
}

void faderCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(30)->Arg(300)->Arg(2048)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(floorFill)->Apply(faderCounts);
BENCHMARK(moveVisibleFaders)->Apply(faderCounts);
BENCHMARK(drawMovingFaders)->Apply(faderCounts);

} // namespace
