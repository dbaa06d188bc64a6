#include "TestConsole.h"

#include "window/CueMenu.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>

namespace {

QAction& itemTitled(const QMenu& menu, const QString& title) {
    for (QAction* item : menu.actions()) {
        if (item->text() == title) {
            return *item;
        }
    }
    qFatal("no item '%s'", qUtf8Printable(title));
}

QStringList marked(const QMenu& menu) {
    QStringList titles;
    for (const QAction* item : menu.actions()) {
        titles.append(item->isSeparator() ? "---" : item->text() + (item->isChecked() ? " *" : ""));
    }
    return titles;
}

} // namespace

void TestConsole::start() {
    console_.load();
    delegate_.emplace(console_, processSignals_);
    delegate_->applicationDidFinishLaunching();
    if (!QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; })) {
        qFatal("no window comes to the front");
    }
}

void TestConsole::tick() {
    console_.engine().tick();
    console_.takeUpOutput();
}

MainWindow& TestConsole::window() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<MainWindow*>(widget)) {
            return *window;
        }
    }
    qFatal("there is no main window");
}

QStringList TestConsole::configurations() {
    return marked(window().configMenu());
}

QStringList TestConsole::cues() {
    constexpr int commands = 9;
    return marked(window().cueMenu()).mid(commands);
}

QStringList TestConsole::fixtures() {
    QStringList titles;
    for (std::size_t row = 0; row < console_.fixtures().count(); ++row) {
        titles.append(fixtureWindow(row).windowTitle());
    }
    return titles;
}

Fixture& TestConsole::fixture(std::size_t row) {
    return *console_.fixtures().rows().at(row);
}

FixtureWindow& TestConsole::fixtureWindow(std::size_t row) {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<FixtureWindow*>(widget);
        if (window && &window->fixture() == &fixture(row)) {
            return *window;
        }
    }
    qFatal("no window shows fixture %zu", row);
}

DMXControl& TestConsole::control(const QString& key) {
    DMXControl* const found = faders().find(key);
    if (!found) {
        qFatal("no control '%s'", qUtf8Printable(key));
    }
    return *found;
}

ControlView& TestConsole::select(const QString& key) {
    DMXControl& fader = control(key);
    ControlView& view = fixtureWindow(console_.fixtures().rowOf(fader.fixture())).view();
    view.select(fader);
    return view;
}

QPoint TestConsole::placeOf(const DMXControl& fader) {
    return fader.fixture().frameOf(fader).topLeft();
}

void TestConsole::chooseCueItem(const QString& title) {
    itemTitled(window().cueMenu(), title).trigger();
}

void TestConsole::chooseConfiguration(const QString& title) {
    itemTitled(window().configMenu(), title).trigger();
}

QDialog* TestConsole::sheet() {
    for (QDialog* sheet : window().findChildren<QDialog*>()) {
        if (sheet->isVisible()) {
            return sheet;
        }
    }
    return nullptr;
}

void TestConsole::loadConfiguration(const QString& title, int universeOffset) {
    chooseConfiguration(title);
    sheet()->findChild<QSpinBox*>()->setValue(universeOffset);
    sheet()->accept();
}

void TestConsole::newCue(const QString& number) {
    chooseCueItem("New Cue…");
    QTest::keyClicks(sheet()->findChild<QLineEdit*>(), number);
    QTest::keyClick(sheet(), Qt::Key_Return);
}

void activate(QWidget& window) {
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        qFatal("a window does not come to the front");
    }
}
