#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

class Engine;
class FixtureWindows;
class Fixtures;
class MainWindow;
class OutputWindow;

/// The windows of the program, the main window and that of each fixture view, as a whole: the Window menu,
/// the commands that all of them know, and which of them is in front.
class ConsoleWindows : public QObject {
    Q_OBJECT

public:
    /// All have to outlive this object.
    ConsoleWindows(MainWindow& mainWindow, FixtureWindows& fixtureWindows, const Engine& engine,
                   const Fixtures& fixtures);

    /// Brings the Window menu in line with the windows and their titles. A window titled `mainTitle` comes to
    /// the front; null stands for none.
    void scanWindows(const QString& mainTitle = {});

    /// Brings the main window to the front, also when it is minimized.
    void bringMainToFront();

    /// The title of the window that is in front or, while another program has the keyboard, was last; a
    /// sheet counts as its window. Null when there was none.
    QString frontTitle() const;

private:
    void addCommands();
    QList<QWidget*> fixtureWindows() const;
    QList<QWidget*> allWindows() const;
    void bringToFront(const QString& title);
    void bringFixtureToFront(int row);
    void bringNeighbourToFront(int step);
    void bringAllHere();
    void showOutput();
    void rememberFront();

    MainWindow& mainWindow_;
    FixtureWindows& fixtureWindows_;
    const Engine& engine_;
    const Fixtures& fixtures_;
    QPointer<QWidget> front_;
    QPointer<OutputWindow> output_;
};
