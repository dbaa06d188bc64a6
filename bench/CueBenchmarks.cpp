#include "BenchRig.h"
#include "controls/DMXControl.h"
#include "cues/CueMenu.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "settings/Settings.h"
#include "settings/SettingsFile.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int fullRig = 256; // universes: 131,072 controls

void setEveryLevel(std::uint32_t level) {
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        control->setDMXValue(level, 0);
    }
}

// A cue table over the full rig in which every control has a record.
class FullCues {
public:
    FullCues() : settings_(QVariantMap()), store_(settings_), stepper_(store_) {
        rigOf(fullRig);
        for (const char* const number : {"1", "2"}) {
            setEveryLevel(100);
            store_.create(number);
            store_.store(number);
        }
    }

    CueStore& store() { return store_; }
    CueStepper& stepper() { return stepper_; }

private:
    Settings settings_;
    CueStore store_;
    CueStepper stepper_;
};

void executeCue(benchmark::State& state) {
    FullCues cues;
    const QVariant entry = cues.store().entry("1");
    while (state.KeepRunning()) {
        CueStepper::executeCue(entry);
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

// Ten thousand cues of ten controls each.
QVariantMap manyCues() {
    QVariantList records;
    for (int i = 0; i < 10; ++i) {
        records.append(
            QVariantMap{{"key", QString("Par %1.Red").arg(i)}, {"value", qlonglong{200}}, {"time", 2.5}});
    }
    QVariantMap cues;
    for (int i = 0; i < 10'000; ++i) {
        cues.insert(QString("%1.%2").arg(i % 1000).arg(i / 1000), records);
    }
    return {{"views", QVariantList()}, {"cues", cues}};
}

void sortManyCues(benchmark::State& state) {
    Settings settings(manyCues());
    const CueStore store(settings);
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(store.sortedCueList());
    }
}

void listManyCuesInTheMenu(benchmark::State& state) {
    Settings settings(manyCues());
    const CueStore store(settings);
    CueMenu menu;
    while (state.KeepRunning()) {
        menu.setupCueMenu(store.sortedCueList(), {});
    }
}

void writeManyCues(benchmark::State& state) {
    const QTemporaryDir folder;
    const SettingsFile file(folder.filePath("settings.plist"));
    const QVariantMap settings = manyCues();
    while (state.KeepRunning()) {
        file.write(settings);
    }
}

void readManyCues(benchmark::State& state) {
    const QTemporaryDir folder;
    const SettingsFile file(folder.filePath("settings.plist"));
    file.write(manyCues());
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(file.read());
    }
}

BENCHMARK(executeCue)->Unit(benchmark::kMillisecond);
BENCHMARK(storeCue)->Unit(benchmark::kMillisecond);
BENCHMARK(nextCue)->Unit(benchmark::kMillisecond);
BENCHMARK(sortManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(listManyCuesInTheMenu)->Unit(benchmark::kMillisecond);
BENCHMARK(writeManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(readManyCues)->Unit(benchmark::kMillisecond);

} // namespace
