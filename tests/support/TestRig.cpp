#include "support/TestRig.h"

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

Fixture& TestRig::add(const QString& name, const QStringList& controlNames, int universe, int address) {
    QVariantList controls;
    for (const QString& control : controlNames) {
        controls.append(controlEntry(control));
    }
    return add(placement(name, universe, address, controls));
}

DMXControl& TestRig::control(const QString& key) const {
    DMXControl* const found = faders_.find(key);
    if (!found) {
        qFatal("no control '%s'", qUtf8Printable(key));
    }
    return *found;
}

void TestRig::tick() {
    engine_.tick();
    engine_.takeNews();
    fixtures_.tellMoved();
}
