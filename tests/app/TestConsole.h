#pragma once

#include "AppDelegate.h"
#include "console/Console.h"
#include "panels/FixtureWindow.h"
#include "process/ProcessSignals.h"
#include "rig/Fixture.h"
#include "support/ScratchHome.h"
#include "window/MainWindow.h"

#include <optional>

class QDialog;

/// The console as main() makes it, on the files of a scratch home, and what an operator does with it. Its
/// output is ticked by hand.
class TestConsole {
public:
    explicit TestConsole(const ScratchHome& home) : console_(home.resources()) {}

    /// Starts the console and waits until one of its windows is in front.
    void start();
    /// The quit sequence.
    void quit() { delegate_->applicationWillTerminate(); }
    /// One tick of the output, and what it changed is taken up.
    void tick();

    /// The window while the console stands.
    MainWindow& window();
    /// "Title *" for an item with a check mark.
    QStringList configurations();
    QStringList cues();
    /// Titles of the windows of all fixtures, in their order.
    QStringList fixtures();

    /// A fixture, by its row, and its window.
    Fixture& fixture(std::size_t row);
    FixtureWindow& fixtureWindow(std::size_t row);
    Faders& faders() { return console_.faders(); }
    /// The fader under that key; the test fails hard when there is none.
    DMXControl& control(const QString& key);
    /// Selects the fader and returns the view of its fixture, which takes the keys.
    ControlView& select(const QString& key);
    /// Where a fader stands in its window.
    static QPoint placeOf(const DMXControl& fader);
    /// What goes out in a universe.
    Engine::SlotLevels slotLevels(std::int32_t universe) { return console_.engine().slotLevels(universe); }

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
    Console console_;
    ProcessSignals processSignals_;
    std::optional<AppDelegate> delegate_; ///< once the console is loaded
};

/// Brings a window to the front; the test fails hard when it does not come.
void activate(QWidget& window);
