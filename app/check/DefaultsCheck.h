#pragma once

#include "check/RigCheck.h"

#include <QString>
#include <QVariantMap>

class Report;

/// Adds the problems of the user defaults: wrong types, an address that is refused, and saved levels of
/// faders that do not exist. `keys` are those of the rigs by the names of their configurations; levels of
/// others are those of a rig that is not there.
void checkDefaults(const QVariantMap& defaults, const QMap<QString, FaderKeys>& keys, Report& report);
