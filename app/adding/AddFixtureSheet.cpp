#include "adding/AddFixtureSheet.h"

#include "adding/ControlPreview.h"
#include "adding/FixtureChoices.h"
#include "adding/PlacementForm.h"
#include "adding/PlacementNote.h"
#include "library/FixtureLibrary.h"
#include "rig/Placement.h"
#include "settings/Settings.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr QSize sheetSize(860, 540);
constexpr int remarksHeight = 72;
constexpr int narrowColumn = 72;

bool walksTheList(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

QString originOf(const QString& profile, const FixtureSources& sources) {
    if (sources.settings.userProfiles().contains(profile)) {
        return "This rig";
    }
    return sources.profiles.ships(profile) ? "Console" : "Other rig";
}

// Without the mode, "Maker Model - Mode" being how an import names its profiles.
QString modelIn(const QString& profile) {
    const qsizetype mode = profile.lastIndexOf(" - ");
    return mode > 0 ? profile.left(mode) : profile;
}

FixtureChoice choiceOf(const QString& profile, const FixtureSources& sources) {
    FixtureChoice choice{.text = profile,
                         .model = modelIn(profile),
                         .from = originOf(profile, sources),
                         .profile = profile,
                         .file = {},
                         .mode = {}};
    ChosenFixture fixture;
    fixture.profile = profile;
    fixture.profiles = sources.profiles;
    choice.channels = patched(fixture, profile, 0, 1, 1).slotCount();
    return choice;
}

FixtureChoice choiceOf(const LibraryMode& mode) {
    return {.text = QString("%1 %2 - %3").arg(mode.maker, mode.model, mode.mode),
            .model = mode.model,
            .from = "Library",
            .profile = {},
            .file = mode.file,
            .mode = mode.mode,
            .channels = static_cast<quint64>(mode.channels)};
}

} // namespace

AddFixtureSheet::AddFixtureSheet(QWidget& window, const FixtureSources& sources)
    : QDialog(&window), sources_(sources), words_(new QLineEdit), choices_(new FixtureChoices(this)),
      list_(new QTreeView), form_(new PlacementForm(presentPatch(sources.patching.editor().fixtures()))),
      preview_(new ControlPreview), remarks_(new QPlainTextEdit), note_(new QLabel),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Cancel)) {
    setWindowTitle("Add Fixture");
    resize(sheetSize);
    layOut();
    connectFields();
    listProfiles();
    listLibrary();
    chooseRow(0);
}

// --- The widgets ---------------------------------------------------------------------------------------

void AddFixtureSheet::layOut() {
    QPushButton* const add = buttons_->addButton("Add", QDialogButtonBox::AcceptRole);
    note_->setObjectName("note");
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    auto* const rows = new QGridLayout(this);
    rows->addWidget(listSide(), 0, 0);
    rows->addWidget(placementSide(), 0, 1);
    rows->addWidget(note_, 1, 0, 1, 2);
    rows->addWidget(buttons_, 2, 0, 1, 2);
    add->setDefault(true); // once it stands in the sheet, which else takes its first button
    rows->setColumnStretch(0, 3);
    rows->setColumnStretch(1, 2);
}

QWidget* AddFixtureSheet::listSide() {
    words_->setPlaceholderText("Search by maker, model and mode");
    words_->setAccessibleName("Search");
    words_->setClearButtonEnabled(true);
    words_->installEventFilter(this);
    list_->setObjectName("fixtures");
    list_->setModel(choices_);
    list_->setAccessibleName("Fixtures that can be added");
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(FixtureChoices::Fixture, QHeaderView::Stretch);
    list_->header()->resizeSection(FixtureChoices::Channels, narrowColumn);
    list_->header()->resizeSection(FixtureChoices::From, narrowColumn);
    auto* const side = new QWidget;
    auto* const rows = new QVBoxLayout(side);
    rows->setContentsMargins({});
    rows->addWidget(words_);
    rows->addWidget(list_);
    return side;
}

QWidget* AddFixtureSheet::placementSide() {
    remarks_->setReadOnly(true);
    remarks_->setAccessibleName("What the import could not express");
    remarks_->setFixedHeight(remarksHeight);
    auto* const side = new QWidget;
    auto* const rows = new QVBoxLayout(side);
    rows->setContentsMargins({});
    rows->addWidget(form_);
    rows->addWidget(preview_);
    rows->addWidget(remarks_);
    return side;
}

void AddFixtureSheet::connectFields() {
    connect(words_, &QLineEdit::textEdited, this, [this](const QString& words) {
        choices_->setWords(words);
        chooseRow(0);
    });
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &AddFixtureSheet::showChoice);
    connect(form_, &PlacementForm::changed, this, &AddFixtureSheet::showPlacement);
    connect(&sources_.patching, &Patching::patchChanged, this, [this] {
        form_->setPatch(presentPatch(sources_.patching.editor().fixtures()));
        showChoice(); // its profile may have gone with a step that was undone
    });
    connect(&sources_.library, &FixtureLibrary::indexed, this, &AddFixtureSheet::listLibrary);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

bool AddFixtureSheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && walksTheList(static_cast<QKeyEvent*>(event)->key())) {
        QCoreApplication::sendEvent(list_, event);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// --- The list ------------------------------------------------------------------------------------------

void AddFixtureSheet::listProfiles() {
    std::vector<FixtureChoice> choices;
    for (const QString& profile : sources_.profiles.names()) {
        choices.push_back(choiceOf(profile, sources_));
    }
    choices_->append(std::move(choices));
}

// What was chosen meanwhile stays chosen: it keeps its row above the library's.
void AddFixtureSheet::listLibrary() {
    const int row = list_->currentIndex().row();
    std::vector<FixtureChoice> choices;
    for (const LibraryMode& mode : sources_.library.modes()) {
        choices.push_back(choiceOf(mode));
    }
    choices_->append(std::move(choices));
    chooseRow(row);
}

void AddFixtureSheet::chooseRow(int row) {
    list_->setCurrentIndex(choices_->index(row, 0));
    showChoice();
}

void AddFixtureSheet::showChoice() {
    const FixtureChoice* const choice = choices_->choice(list_->currentIndex());
    chosen_ = choice ? chosenFixture(*choice, sources_.profiles, sources_.settings) : ChosenFixture();
    remarks_->setPlainText(chosen_.remarks.join('\n'));
    remarks_->setVisible(!chosen_.remarks.isEmpty());
    form_->setFixture(chosen_.profile, choice ? choice->model : QString(),
                      patched(chosen_, {}, 0, 1, 1).slotCount());
}

// --- The placement -------------------------------------------------------------------------------------

QString AddFixtureSheet::obstacle() const {
    if (!chosen_.refusal.isNull()) {
        return chosen_.refusal;
    }
    return chosen_.profile.isNull() ? QString("No fixture is chosen.")
                                    : obstacleTo(form_->order(), form_->takenNames());
}

// More copies than fit are not laid out: there may be very many.
void AddFixtureSheet::showPlacement() {
    const QString inTheWay = obstacle();
    FixtureOrder order = form_->order();
    if (!inTheWay.isNull()) {
        order.copies = 1;
    }
    std::vector<PatchedFixture> copies;
    for (const QVariant& placement : placementsOf(order)) {
        copies.push_back(patchedFixture(Placement::fromEntry(placement), chosen_.profiles));
    }
    preview_->showControls(copies.front());
    note_->setText(inTheWay.isNull() ? placementNote(order, copies, form_->patch()) : inTheWay);
    for (QAbstractButton* const button : buttons_->buttons()) {
        button->setEnabled(buttons_->buttonRole(button) != QDialogButtonBox::AcceptRole || inTheWay.isNull());
    }
}

NewFixtures AddFixtureSheet::newFixtures() const {
    return {.placements = placementsOf(form_->order()), .profiles = chosen_.comingProfiles};
}
