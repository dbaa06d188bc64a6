#include "window/MainWindow.h"

#include "panels/ScreenPlace.h"
#include "rig/ShownText.h"
#include "rig/WindowPlaces.h"
#include "ui_MainWindow.h"
#include "window/HelpPage.h"
#include "window/OutputStatusLine.h"
#include "window/RecoveryNotice.h"
#include "window/ScrollingMenu.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QUndoStack>

namespace {

constexpr QLatin1StringView autosavename("faderhall_main_window");

// Faders and text fields both know how to copy and paste; whatever has the focus is asked. False when it does
// not know how.
bool sendToFocus(const char* operation) {
    QWidget* const focus = QApplication::focusWidget();
    if (!focus || focus->metaObject()->indexOfSlot(QByteArray(operation) + "()") < 0) {
        return false;
    }
    return QMetaObject::invokeMethod(focus, operation);
}

// The text after the command: "Undo Remove Spot".
QString commandText(const QString& command, const QString& step) {
    return step.isEmpty() ? command : command + ' ' + menuText(step);
}

} // namespace

MainWindow::MainWindow(WindowPlaces& places) : ui_(std::make_unique<Ui::MainWindow>()), places_(places) {
    ui_->setupUi(this);
    // A text field keeps its editing keys, those of Next Cue and Clear among them, but only once it is gone
    // to.
    ui_->content->setFocus();
    scrollInOneColumn(*ui_->configMenu);
    scrollInOneColumn(*ui_->windowMenu);
    connect(ui_->quitAction, &QAction::triggered, this, &MainWindow::quitChosen);
    connect(ui_->copyAction, &QAction::triggered, this, [] { sendToFocus("copy"); });
    connect(ui_->pasteAction, &QAction::triggered, this, [] { sendToFocus("paste"); });
    connect(ui_->keysAction, &QAction::triggered, this, [this] { openKeysPage(*this); });
    connect(ui_->aboutAction, &QAction::triggered, this, [this] { openAboutPage(*this); });
    connectFixtures();
    connect(ui_->tableview, &QTableView::activated, this, [this](const QModelIndex& cell) {
        if (!cell.flags().testFlag(Qt::ItemIsEditable)) {
            emit fixtureChosen(cell.row());
        }
    });
}

MainWindow::~MainWindow() = default;

AddressField& MainWindow::addressField() {
    return *ui_->TxAddress;
}
QTableView& MainWindow::tableview() {
    return *ui_->tableview;
}
QMenu& MainWindow::configMenu() {
    return *ui_->configMenu;
}
CueMenu& MainWindow::cueMenu() {
    return *ui_->cueMenu;
}
WindowMenu& MainWindow::windowMenu() {
    return *ui_->windowMenu;
}

void MainWindow::connectFixtures() {
    connect(ui_->addFixtureAction, &QAction::triggered, this, &MainWindow::addFixtureChosen);
    connect(ui_->importFixtureAction, &QAction::triggered, this, &MainWindow::importFixtureChosen);
    connect(ui_->removeFixtureAction, &QAction::triggered, this,
            [this] { emit removeFixturesChosen(ui_->tableview->selectionModel()->selectedRows()); });
    ui_->tableview->addAction(ui_->removeFixtureAction); // its key is the table's
}

void MainWindow::followSelection() {
    const QItemSelectionModel* const selection = ui_->tableview->selectionModel();
    ui_->removeFixtureAction->setEnabled(selection && selection->hasSelection());
}

void MainWindow::showFixtures(QAbstractItemModel& fixtures) {
    ui_->tableview->setModel(&fixtures);
    connect(ui_->tableview->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &MainWindow::followSelection);
    connect(&fixtures, &QAbstractItemModel::modelReset, this, &MainWindow::followSelection);
    connect(&fixtures, &QAbstractItemModel::rowsRemoved, this, &MainWindow::followSelection);
    ui_->tableview->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch); // names need the room
}

void MainWindow::showHistory(QUndoStack& history) {
    const auto follow = [this, &history] {
        ui_->undoAction->setText(commandText("&Undo", history.undoText()));
        ui_->undoAction->setEnabled(history.canUndo());
        ui_->redoAction->setText(commandText("&Redo", history.redoText()));
        ui_->redoAction->setEnabled(history.canRedo());
    };
    connect(&history, &QUndoStack::indexChanged, this, follow);
    connect(ui_->undoAction, &QAction::triggered, this, [&history] {
        if (!sendToFocus("undo")) {
            history.undo();
        }
    });
    connect(ui_->redoAction, &QAction::triggered, this, [&history] {
        if (!sendToFocus("redo")) {
            history.redo();
        }
    });
    follow();
}

void MainWindow::showOutput(const Engine& engine, const Destination& destination) {
    constexpr int allRoom = 1;
    ui_->statusBar->addWidget(new OutputStatusLine(engine, destination), allRoom); // the bar owns it
}

void MainWindow::addConfiguration(const QString& name) {
    QAction* const item = ui_->configMenu->addAction(menuText(name));
    item->setData(name);
    connect(item, &QAction::triggered, this, [this, item, name] {
        item->setChecked(item->isCheckable()); // choosing only asks, and must not take the mark away
        emit configurationChosen(name);
    });
}

void MainWindow::checkConfiguration(const QString& name) {
    for (QAction* const item : ui_->configMenu->actions()) {
        if (item->data().toString() == name) {
            item->setCheckable(true);
            item->setChecked(true);
        }
    }
}

void MainWindow::showRecoveryNotice() {
    auto* const notice = new RecoveryNotice(ui_->content);
    connect(notice, &RecoveryNotice::savedRigChosen, this, &MainWindow::savedRigChosen);
    ui_->rows->insertWidget(0, notice);
}

void MainWindow::open() {
    if (const auto remembered = places_.place(autosavename)) {
        move(movedOntoScreen(*remembered, size()));
    }
    show();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // the window goes with the program
    emit quitChosen();
}

void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    if (isVisible()) {
        places_.setPlace(autosavename, pos());
    }
}
