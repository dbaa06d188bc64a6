#pragma once

#include <QByteArray>
#include <QTemporaryDir>
#include <QVariantMap>

#include <optional>

/// A home folder of its own for the program, empty at first, as long as it lives: settings, user defaults and
/// tables lie in it.
class ScratchHome {
public:
    ScratchHome();
    ~ScratchHome();
    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;
    ScratchHome(ScratchHome&&) = delete;
    ScratchHome& operator=(ScratchHome&&) = delete;

    /// The folder of the tables, as --resources names it.
    QString resources() const { return folder_.filePath("tables"); }
    void writeProfiles(const QVariantMap& table) const;
    void writeConfigurations(const QVariantMap& table) const;

    void writeSettings(const QVariantMap& settings) const;
    void writeSettings(const QByteArray& bytes) const;
    std::optional<QVariantMap> settings() const;

    void writeUserDefaults(const QVariantMap& defaults) const;
    QVariantMap userDefaults() const;

private:
    QString settingsPath() const;
    QString userDefaultsPath() const;

    QTemporaryDir folder_;
    QByteArray home_;
    QByteArray configurationHome_;
};
