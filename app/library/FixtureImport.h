#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <vector>

/// One mode of one fixture as user profiles: the mode's own, and those nested in it.
struct ImportedMode {
    QString profileName; ///< "Maker Model - Mode"
    QString mode;
    int channels = 0;     ///< slots
    QVariantMap profiles; ///< profile name to its list of entries, as settings keep them under "profiles"
    QStringList remarks;  ///< what could not be expressed, a line each; empty when everything was
};

/// What a file gives: its modes, or why it is refused (whole: no modes then).
struct FixtureImport {
    QString maker;
    QString model;
    std::vector<ImportedMode> modes;
    QString refusal; ///< names the file and the reason; null when it is not refused
};

/// Reads a fixture definition, .qxf or Open Fixture Library JSON, told apart by what it begins with.
FixtureImport importFixture(const QString& path);
