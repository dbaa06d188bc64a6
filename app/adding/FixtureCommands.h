#pragma once

#include "adding/AddFixtureSheet.h"
#include "library/FixtureLibrary.h"

#include <QModelIndexList>
#include <QObject>

class MainWindow;

/// What the items of the Fixtures menu do: each asks in a sheet of the main window and changes the patch.
class FixtureCommands : public QObject {
    Q_OBJECT

public:
    /// All have to outlive this object.
    FixtureCommands(MainWindow& window, const Profiles& profiles, const Settings& settings,
                    Patching& patching);

private:
    void askForFixture();
    void askForFile();
    void importFile(const QString& path);
    void askToRemove(const QModelIndexList& rows);

    MainWindow& window_;
    const Profiles& profiles_;
    const Settings& settings_;
    Patching& patching_;
    FixtureLibrary library_;
};
