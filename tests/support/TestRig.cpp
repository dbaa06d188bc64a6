#include "support/TestRig.h"

#include "controls/DMXControl.h"
#include "controls/EditView.h"

QVariantMap controlEntry(const QString& name, int restLevel) {
    return {{"name", name}, {"default", qlonglong{restLevel}}};
}

QVariantMap placement(const QString& name, int universe, int address, const QVariantList& controls) {
    return {{"name", name},
            {"universe", qlonglong{universe}},
            {"address", qlonglong{address}},
            {"layer", qlonglong{1}},
            {"profiles", controls}};
}

TestRig::~TestRig() {
    ControlView::reset();
    DMXControl::reset();
    EditView::release();
}

ControlView& TestRig::add(const QVariantMap& placement) {
    return ControlView::controlViewWithSettings(placement, profiles_, places_);
}

ControlView& TestRig::add(const QString& name, const QStringList& controlNames, int universe, int address) {
    QVariantList controls;
    for (const QString& control : controlNames) {
        controls.append(controlEntry(control));
    }
    return add(placement(name, universe, address, controls));
}

DMXControl& controlNamed(const QString& key) {
    const auto found = DMXControl::controlsByName().find(key);
    if (found == DMXControl::controlsByName().end()) {
        qFatal("no control '%s'", qUtf8Printable(key));
    }
    return *found->second;
}
