#include "BenchRig.h"

#include "artnet/DMX_Universe.h"
#include "controls/DMXControl.h"
#include "fixtures/ControlView.h"

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

BenchRig::BenchRig(int universeCount, int controlsPerUniverse) {
    profiles_.setTable(QVariantMap{{"Faders", columnsOfFaders(controlsPerUniverse)}});
    for (int universe = 0; universe < universeCount; ++universe) {
        ControlView::controlViewWithSettings({{"name", QString("Fixture %1").arg(universe)},
                                              {"address", 1},
                                              {"universe", universe},
                                              {"profiles", QVariantList{QVariantMap{{"profile", "Faders"}}}}},
                                             profiles_, places_);
    }
    showWindows(false);
}

BenchRig::~BenchRig() {
    ControlView::reset();
    DMXControl::reset();
    DMX_Universe::releaseUniverses();
}

void BenchRig::showWindows(bool shown) const {
    for (const auto& view : *ControlView::controlViews()) {
        view->window()->setVisible(shown);
    }
    QApplication::processEvents();
}

BenchRig& rigOf(int universeCount) {
    if (!gRig || universeCount != gUniverseCount) {
        gRig.reset(); // first: the registries know one rig at a time
        gRig = std::make_unique<BenchRig>(universeCount);
        gUniverseCount = universeCount;
    }
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        control->setDefault();
    }
    return *gRig;
}

void releaseRig() {
    gRig.reset();
}

void tick(int socket) {
    for (const auto& view : *ControlView::controlViews()) {
        view->update();
    }
    for (const auto& [key, universe] : *DMX_Universe::universes()) {
        universe->sendWithSocket(socket, tickAddress);
    }
}
