#pragma once

#include <QMainWindow>
#include <QModelIndexList>

#include <memory>

class AddressField;
class CueMenu;
class Destination;
class Engine;
class QAbstractItemModel;
class QTableView;
class QUndoStack;
class WindowMenu;
class WindowPlaces;

namespace Ui {
class MainWindow;
}

/// The program's main window: menu bar, address field and fixture table, as MainWindow.ui describes them.
/// It says what the operator chose and leaves the doing to others; only Copy, Paste and the Undo of
/// text fields, which go to whatever has the focus, end here.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `places` has to outlive the window.
    explicit MainWindow(WindowPlaces& places);
    ~MainWindow() override;

    AddressField& addressField();
    QTableView& tableview();
    QMenu& configMenu();
    CueMenu& cueMenu();
    WindowMenu& windowMenu();

    /// Fills the table. `fixtures` has to outlive the window or to be empty by then.
    void showFixtures(QAbstractItemModel& fixtures);
    /// Undo and Redo go through these steps. `history` has to outlive the window.
    void showHistory(QUndoStack& history);
    /// Tells in the status line what goes out to the destination. Both have to outlive the window.
    void showOutput(const Engine& engine, const Destination& destination);

    /// Adds a rig's name to the configuration menu.
    void addConfiguration(const QString& name);
    /// Puts the check mark on a rig's name; the others keep theirs.
    void checkConfiguration(const QString& name);

    /// Says that the show of a run that ended badly was taken up, and offers the way back.
    void showRecoveryNotice();

    /// Shows the window at its remembered place.
    void open();

signals:
    void quitChosen();
    void configurationChosen(const QString& name);
    /// A double click or Return on the name of a fixture, by its row.
    void fixtureChosen(int row);
    void savedRigChosen();
    void addFixtureChosen();
    void importFixtureChosen();
    /// Asks for the fixtures in these rows of the table to be removed.
    void removeFixturesChosen(const QModelIndexList& rows);

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void connectFixtures();
    void followSelection();

    std::unique_ptr<Ui::MainWindow> ui_;
    WindowPlaces& places_;
};
