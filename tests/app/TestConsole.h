#pragma once

#include "AppDelegate.h"
#include "support/ScratchHome.h"
#include "window/MainWindow.h"

class ControlView;
class QDialog;

/// The console as main() makes it, on the files of a scratch home, and what an operator does with it.
class TestConsole {
public:
    explicit TestConsole(const ScratchHome& home) : delegate_(home.resources()) {}

    /// Starts the console and waits until one of its windows is in front.
    void start();
    /// The quit sequence.
    void quit() { delegate_.applicationWillTerminate(); }
    void tick() { delegate_.timerProc(); }

    /// The window while the console stands.
    MainWindow& window();
    /// "Title *" for an item with a check mark.
    QStringList configurations();
    QStringList cues();
    /// Titles of the windows of all fixtures, in their order.
    QStringList fixtures();

    /// Chooses an item of the cue menu or of the configuration menu by its title.
    void chooseCueItem(const QString& title);
    void chooseConfiguration(const QString& title);
    /// The sheet that is open; null when none is.
    QDialog* sheet();
    /// Chooses a configuration and answers its question.
    void loadConfiguration(const QString& title, int universeOffset = 0);
    /// Makes a cue of that number as the operator does.
    void newCue(const QString& number);

private:
    AppDelegate delegate_;
};

/// The view of a fixture, by its row.
ControlView& fixture(std::size_t row);

/// Brings a window to the front; the test fails hard when it does not come.
void activate(QWidget& window);
