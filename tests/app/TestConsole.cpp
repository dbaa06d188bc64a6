#include "TestConsole.h"

#include "cues/CueMenu.h"
#include "fixtures/ControlView.h"

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
    delegate_.applicationDidFinishLaunching();
    if (!QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; })) {
        qFatal("no window comes to the front");
    }
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
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            titles.append(view->window()->windowTitle());
        }
    }
    return titles;
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

ControlView& fixture(std::size_t row) {
    return *ControlView::controlViews()->at(row);
}

void activate(QWidget& window) {
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        qFatal("a window does not come to the front");
    }
}
