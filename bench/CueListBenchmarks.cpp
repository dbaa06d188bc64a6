#include "BenchRig.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "plist/PlistNode.h"
#include "plist/PropertyList.h"
#include "settings/Settings.h"
#include "settings/SettingsFile.h"
#include "window/CueCommands.h"
#include "window/CueMenu.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

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

/// The cue table of a console without fixtures.
class ManyCues {
public:
    ManyCues()
        : settings_(manyCues()), store_(settings_, faders_), stepper_(store_, faders_),
          commands_(store_, stepper_, menu_) {
        releaseRig();
    }

    CueMenu& menu() { return menu_; }
    CueCommands& commands() { return commands_; }
    CueStore& store() { return store_; }
    CueStepper& stepper() { return stepper_; }

private:
    Faders faders_;
    Settings settings_;
    CueMenu menu_;
    CueStore store_;
    CueStepper stepper_;
    CueCommands commands_;
};

// What the library takes to parse the file and to give it back.
void floorParse(benchmark::State& state) {
    const QByteArray bytes = writeXmlPropertyList(manyCues());
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(Plist::parsed(bytes));
    }
}

void floorSerialise(benchmark::State& state) {
    const Plist::Node root = Plist::parsed(writeXmlPropertyList(manyCues()));
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(Plist::serialised(root.get(), Plist::Format::xml));
    }
}

void readManyCues(benchmark::State& state) {
    const QTemporaryDir folder;
    const SettingsFile file(folder.filePath("settings.plist"));
    file.write(manyCues());
    while (state.KeepRunning()) {
        if (!file.read()) {
            state.SkipWithError("the file is not read");
        }
    }
}

void writeManyCues(benchmark::State& state) {
    const QTemporaryDir folder;
    const SettingsFile file(folder.filePath("settings.plist"));
    const QVariantMap settings = manyCues();
    while (state.KeepRunning()) {
        if (!file.write(settings)) {
            state.SkipWithError("the file is not written");
        }
    }
}

void floorSortTexts(benchmark::State& state) {
    const QStringList numbers = ManyCues().store().sortedCueList();
    while (state.KeepRunning()) {
        QStringList shuffled = numbers;
        std::reverse(shuffled.begin(), shuffled.end());
        std::ranges::sort(shuffled);
        benchmark::DoNotOptimize(shuffled);
    }
}

void sortManyCues(benchmark::State& state) {
    ManyCues cues;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(cues.store().sortedCueList());
    }
}

void stepThroughManyCues(benchmark::State& state) {
    ManyCues cues;
    while (state.KeepRunning()) {
        cues.stepper().next();
    }
}

// What happens to the list in a show.
void makeAndDeleteOneOfManyCues(benchmark::State& state) {
    ManyCues cues;
    cues.commands().setupCueMenu();
    while (state.KeepRunning()) {
        cues.store().create("500.55");
        cues.stepper().setCurrCue("500.55");
        cues.commands().setupCueMenu();
        emit cues.menu().cueAction(CueMenu::DeleteCue, "Delete Cue");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void floorMakeActions(benchmark::State& state) {
    const QStringList numbers = ManyCues().store().sortedCueList();
    while (state.KeepRunning()) {
        QMenu menu;
        for (const QString& number : numbers) {
            menu.addAction(number);
        }
    }
}

// At the start, and after another rig was loaded.
void listManyCuesInTheMenu(benchmark::State& state) {
    ManyCues cues;
    while (state.KeepRunning()) {
        CueMenu menu;
        menu.setupCueMenu(cues.store().sortedCueList(), {});
    }
}

BENCHMARK(floorParse)->Unit(benchmark::kMillisecond);
BENCHMARK(floorSerialise)->Unit(benchmark::kMillisecond);
BENCHMARK(readManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(writeManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(floorSortTexts)->Unit(benchmark::kMillisecond);
BENCHMARK(sortManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(stepThroughManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(makeAndDeleteOneOfManyCues)->Unit(benchmark::kMillisecond);
BENCHMARK(floorMakeActions)->Unit(benchmark::kMillisecond);
BENCHMARK(listManyCuesInTheMenu)->Unit(benchmark::kMillisecond);

} // namespace
