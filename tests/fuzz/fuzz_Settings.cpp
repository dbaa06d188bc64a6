// Any settings file, from its bytes to fixture windows that are sent, cues that are run and a file that is
// written again. The first byte tells a file as it stands from bytes that rigs are made of.

#include "Require.h"
#include "RigMaker.h"
#include "artnet/DMX_Universe.h"
#include "controls/DMXControl.h"
#include "controls/EditView.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "fixtures/ControlView.h"
#include "fixtures/Profiles.h"
#include "plist/PropertyList.h"
#include "plist/Reading.h"
#include "settings/Settings.h"
#include "support/TestPlaces.h"

#include <QApplication>

#include <fuzzer/FuzzedDataProvider.h>

#include <vector>

namespace {

constexpr std::size_t maxBytes = 1 << 20;
constexpr int mostViews = 8; // a window takes its time

QVariantMap settingsFrom(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == 'R') {
        FuzzedDataProvider bytes(data + 1, size - 1);
        return RigMaker(bytes).settings();
    }
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    return mapValue(readPropertyList(file, maxBytes).value_or(QVariant()));
}

void tick() {
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            view->update();
        }
    }
}

void runCues(Settings& settings) {
    CueStore cues(settings);
    CueStepper stepper(cues);
    for (qsizetype left = cues.sortedCueList().size(); left >= 0; --left) {
        stepper.next();
        tick();
    }
    stepper.previous();
    stepper.storeCue();
    tick();
    stepper.deleteCue();
    stepper.clear();
}

void runShow(const QVariantMap& dictionary) {
    Settings settings(dictionary);
    Profiles profiles;
    profiles.setTable(QVariantMap());
    profiles.addUserProfiles(settings.userProfiles());
    TestPlaces places;
    const QVariantList views = settings.views();
    for (const QVariant& placement : views.first(std::min<qsizetype>(views.size(), mostViews))) {
        ControlView::controlViewWithSettings(mapValue(placement), profiles, places);
    }
    tick();
    runCues(settings);
    writeXmlPropertyList(*settings.dictionary());
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
    QCoreApplication::processEvents();
    ControlView::reset();
    DMXControl::reset();
    EditView::release();
    DMX_Universe::releaseUniverses();
    return 0;
}
