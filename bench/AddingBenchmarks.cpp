#include "adding/FixtureChoices.h"

#include <benchmark/benchmark.h>

#include <array>

namespace {

// As many modes as the installed library has, and one more letter in the search field each time.
void searchFixtures(benchmark::State& state) {
    constexpr int count = 4000;
    std::vector<FixtureChoice> choices;
    choices.reserve(count);
    for (int i = 0; i < count; ++i) {
        FixtureChoice choice;
        choice.text = QString("Maker %1 Model %2 - Mode %3").arg(i % 90).arg(i).arg(i % 7);
        choice.from = "Library";
        choices.push_back(std::move(choice));
    }
    FixtureChoices list;
    list.append(std::move(choices));
    const std::array<QString, 3> typed{"mode 1", "mode 12", "mode 123"};
    std::size_t letters = 0;
    while (state.KeepRunning()) {
        list.setWords(typed[letters++ % typed.size()]);
    }
}

} // namespace

BENCHMARK(searchFixtures)->Unit(benchmark::kMillisecond);
