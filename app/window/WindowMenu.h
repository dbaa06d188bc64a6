#pragma once

#include <QMenu>
#include <QStringList>

class QWidget;

/// The menu of the program's windows: an item for each under its title, which brings it to the front, and
/// Ctrl+0 to Ctrl+9 for the first ten; below them commands that concern all windows.
class WindowMenu : public QMenu {
    Q_OBJECT

public:
    using QMenu::QMenu;

    /// Adds a command, by its first key and others; it stays whatever windows are listed.
    QAction& addCommand(const QString& text, const QList<QKeySequence>& keys);

    /// Lists the windows anew, without keys.
    void setWindows(const QList<QWidget*>& windows);

    /// Gives the main window's item the number 0 and those of the fixture windows the numbers from 1, in
    /// their order. A title without an item takes no number; of equal titles the first item gets the last
    /// of their numbers. A number of more than one digit is no key.
    void setKeyEquivalents(const QString& mainTitle, const QStringList& fixtureTitles);

private:
    bool setKeyEquivalent(const QString& title, int number);

    QList<QAction*> windowItems_;
    QAction* aboveCommands_ = nullptr; ///< a separator; null while there are no commands
};
