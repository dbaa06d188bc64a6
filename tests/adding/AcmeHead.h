#pragma once

#include <QFile>
#include <QString>

/// Writes the definition of a fixture, Acme Head: a mode Long with a pan of 16 bits and a dimmer, 3 slots,
/// and a mode Short with the dimmer alone.
inline void writeAcmeHead(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
    file.write("<!DOCTYPE FixtureDefinition><FixtureDefinition>"
               "<Manufacturer>Acme</Manufacturer><Model>Head</Model><Type>Moving Head</Type>"
               "<Channel Name='Pan' Preset='PositionPan'/><Channel Name='Pan Fine' Preset='PositionPanFine'/>"
               "<Channel Name='Dimmer' Preset='IntensityMasterDimmer'/>"
               "<Mode Name='Long'><Channel Number='0'>Pan</Channel><Channel Number='1'>Pan Fine</Channel>"
               "<Channel Number='2'>Dimmer</Channel></Mode>"
               "<Mode Name='Short'><Channel Number='0'>Dimmer</Channel></Mode></FixtureDefinition>");
}
