#include "BenchRig.h"

#include <QApplication>

namespace {

std::unique_ptr<BenchRig> gRig;
int gUniverseCount = 0;

} // namespace

QVariantList columnsOfFaders(int controlCount) {
    constexpr int rows = 32;
    QVariantList entries;
    for (int i = 0; i < controlCount; ++i) {
        entries.append(QVariantMap{{"name", QString("Level %1").arg(i)}, {"header", i > 0 && i % rows == 0}});
    }
    return entries;
}

BenchRig::BenchRig(int universeCount, int controlsPerUniverse)
    : fixtures_(engine_, faders_, profiles_), windows_(fixtures_, places_) {
    profiles_.setTable(QVariantMap{{"Faders", columnsOfFaders(controlsPerUniverse)}});
    QVariantList placements;
    for (int universe = 0; universe < universeCount; ++universe) {
        placements.append(QVariantMap{{"name", QString("Fixture %1").arg(universe)},
                                      {"address", 1},
                                      {"universe", universe},
                                      {"profiles", QVariantList{QVariantMap{{"profile", "Faders"}}}}});
    }
    fixtures_.replaceAll(placements);
    windows_.open();
    for (const auto& fixture : fixtures_.rows()) {
        windows_.windowOf(*fixture); // those that would come later
    }
    showWindows(false);
}

void BenchRig::showWindows(bool shown) const {
    for (FixtureWindow* const window : windows_.windows()) {
        window->setVisible(shown);
    }
    QApplication::processEvents();
}

BenchRig& rigOf(int universeCount) {
    if (!gRig || universeCount != gUniverseCount) {
        gRig.reset(); // first: two full rigs are more than there is room for
        gRig = std::make_unique<BenchRig>(universeCount);
        gUniverseCount = universeCount;
    }
    for (DMXControl* const control : gRig->faders().sorted()) {
        control->setDefault();
    }
    return *gRig;
}

void releaseRig() {
    gRig.reset();
}
