#pragma once

#include <QSet>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

class Profiles;
class Settings;

/// The names of all profiles that these entries come to, nested ones included.
QSet<QString> profilesIn(const QVariantList& entries, const Profiles& profiles);

/// Those profiles of a fixture that neither ship with the program nor stand in the rig: left by another rig
/// of this run, they would not be there at the next start.
QVariantMap profilesToTakeAlong(const QString& profile, const Profiles& profiles, const Settings& settings);

/// Of profiles that are to come into the rig, the first that fixtures of the rig use in another form; null
/// when there is none.
QString contestedProfile(const QVariantMap& coming, const Profiles& profiles, const Settings& settings);
