#pragma once

#include "adding/ChosenFixture.h"
#include "rigging/Patching.h"

#include <QDialog>

class ControlPreview;
class FixtureChoices;
class FixtureLibrary;
class PlacementForm;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeView;

/// What the sheet chooses from. All of it has to outlive the sheet.
struct FixtureSources {
    const Profiles& profiles;
    const Settings& settings;
    FixtureLibrary& library;
    Patching& patching;
};

/// The sheet in which a fixture is chosen, named and placed. The keys of the search field walk the list.
class AddFixtureSheet : public QDialog {
    Q_OBJECT

public:
    AddFixtureSheet(QWidget& window, const FixtureSources& sources);

    /// What is to be added, once the sheet was accepted.
    NewFixtures newFixtures() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    QWidget* listSide();
    QWidget* placementSide();
    void connectFields();
    void listProfiles();
    void listLibrary();
    void chooseRow(int row);
    void showChoice();
    void showPlacement();
    QString obstacle() const;

    FixtureSources sources_;
    ChosenFixture chosen_;
    QLineEdit* words_;
    FixtureChoices* choices_;
    QTreeView* list_;
    PlacementForm* form_;
    ControlPreview* preview_;
    QPlainTextEdit* remarks_;
    QLabel* note_;
    QDialogButtonBox* buttons_;
};
