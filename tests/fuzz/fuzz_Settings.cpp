// Any settings file, from its bytes to fixture windows that are sent, cues that are run and a file that is
// written again. The first byte tells a file as it stands from bytes that rigs are made of.

#include "Require.h"
#include "RigMaker.h"
#include "artnet/Transport.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "output/Engine.h"
#include "panels/FixtureWindows.h"
#include "plist/PropertyList.h"
#include "plist/Reading.h"
#include "rig/Faders.h"
#include "rig/Fixtures.h"
#include "rig/Profiles.h"
#include "settings/Settings.h"
#include "support/TestPlaces.h"

#include <QApplication>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

namespace {

constexpr std::size_t maxBytes = 1 << 20;
constexpr std::uint32_t localHost = 0x7F000001;
constexpr int mostViews = 8; // a window takes its time

QVariantMap settingsFrom(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == 'R') {
        FuzzedDataProvider bytes(data + 1, size - 1);
        return RigMaker(bytes).settings();
    }
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    return mapValue(readPropertyList(file, maxBytes).value_or(QVariant()));
}

struct Rig {
    Engine engine;
    Profiles profiles;
    Faders faders;
    Fixtures fixtures{engine, faders, profiles};
    TestPlaces places;
    FixtureWindows windows{fixtures, places};

    // What is sent goes nowhere: without a socket each rig would complain.
    Rig() {
        engine.setSocket(createSocket(0));
        engine.setAddress(localHost);
    }
    void tick() {
        engine.tick();
        engine.takeNews();
        fixtures.tellMoved();
    }
};

void runCues(Settings& settings, Rig& rig) {
    CueStore cues(settings, rig.faders);
    CueStepper stepper(cues, rig.faders);
    for (qsizetype left = cues.sortedCueList().size(); left >= 0; --left) {
        stepper.next();
        rig.tick();
    }
    stepper.previous();
    stepper.storeCue();
    rig.tick();
    stepper.deleteCue();
    stepper.clear();
}

void runShow(const QVariantMap& dictionary) {
    Settings settings(dictionary);
    Rig rig;
    rig.profiles.setTable(QVariantMap());
    rig.profiles.addUserProfiles(settings.userProfiles());
    rig.windows.open();
    const QVariantList views = settings.views();
    rig.fixtures.replaceAll(views.first(std::min<qsizetype>(views.size(), mostViews)));
    rig.tick();
    runCues(settings, rig);
    writeXmlPropertyList(*settings.dictionary());
    QCoreApplication::processEvents();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz_Settings";
    static char* arguments[] = {name, nullptr};
    new QApplication(count, arguments); // as long as the process, which ends without coming back here
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    runShow(settingsFrom(data, size));
    return 0;
}
