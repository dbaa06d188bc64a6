#include "adding/FixtureCommands.h"

#include "adding/ProfileUse.h"
#include "library/FixtureImport.h"
#include "window/MainWindow.h"
#include "window/RemoveFixtureSheet.h"
#include "window/Sheets.h"

#include <QFileDialog>
#include <QFileInfo>

namespace {

QString titleOf(const FixtureImport& import) {
    return QString("%1 %2").arg(import.maker, import.model).trimmed();
}

QVariantMap profilesOf(const FixtureImport& import) {
    QVariantMap profiles;
    for (const ImportedMode& mode : import.modes) {
        profiles.insert(mode.profiles);
    }
    return profiles;
}

// Each profile, with what its mode lost below it.
QStringList report(const FixtureImport& import) {
    QStringList lines;
    for (const ImportedMode& mode : import.modes) {
        lines.append(QString(mode.channels == 1 ? "%1 (%2 channel)" : "%1 (%2 channels)")
                         .arg(mode.profileName, QString::number(mode.channels)));
        for (const QString& remark : mode.remarks) {
            lines.append("    " + remark);
        }
    }
    return lines;
}

} // namespace

FixtureCommands::FixtureCommands(MainWindow& window, const Profiles& profiles, const Settings& settings,
                                 Patching& patching)
    : window_(window), profiles_(profiles), settings_(settings), patching_(patching),
      library_(FixtureLibrary::installedFolder()) {
    connect(&window, &MainWindow::addFixtureChosen, this, &FixtureCommands::askForFixture);
    connect(&window, &MainWindow::importFixtureChosen, this, &FixtureCommands::askForFile);
    connect(&window, &MainWindow::removeFixturesChosen, this, &FixtureCommands::askToRemove);
}

// The library is looked through when it is first asked for.
void FixtureCommands::askForFixture() {
    if (raiseOpenSheet(window_)) {
        return;
    }
    auto* const sheet = new AddFixtureSheet(window_, {.profiles = profiles_,
                                                      .settings = settings_,
                                                      .library = library_,
                                                      .patching = patching_}); // the window owns it
    openSheet(*sheet, [this, sheet] { patching_.addFixtures(sheet->newFixtures()); });
    library_.startIndexing();
}

// The toolkit's own dialog: not every desktop has a portal for another one.
void FixtureCommands::askForFile() {
    if (raiseOpenSheet(window_)) {
        return;
    }
    auto* const dialog =
        new QFileDialog(&window_, "Import Fixture", {}, "Fixture definitions (*.qxf *.json);;All files (*)");
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFile);
    openSheet(*dialog, [this, dialog] { importFile(dialog->selectedFiles().value(0)); });
}

// All modes of the file or none.
void FixtureCommands::importFile(const QString& path) {
    const FixtureImport import = importFixture(path);
    QString refusal = import.refusal;
    const QVariantMap profiles = profilesOf(import);
    if (const QString name = contestedProfile(profiles, profiles_, settings_); !name.isNull()) {
        refusal = QString("Fixtures of this rig use another profile “%1”.").arg(name);
    }
    if (!refusal.isNull()) {
        openReportSheet(window_,
                        {.message = "The fixture was not imported",
                         .informativeText = QFileInfo(path).fileName(),
                         .fieldLabel = {}},
                        {refusal});
        return;
    }
    patching_.addProfiles(profiles, titleOf(import));
    openReportSheet(window_,
                    {.message = QString("%1 was imported").arg(titleOf(import)),
                     .informativeText = "Add Fixture lists it now:",
                     .fieldLabel = {}},
                    report(import));
}

void FixtureCommands::askToRemove(const QModelIndexList& rows) {
    openRemoveFixtureSheet(window_, rows, [this](const std::vector<std::size_t>& present) {
        patching_.removeFixtures(present);
    });
}
