#pragma once

#include <QTextBrowser>

/// A page of help in a window of its own beside the main window; Escape closes it.
class HelpPage : public QTextBrowser {
    Q_OBJECT

public:
    /// Shows the page of that title on the screen of `window`, which owns it. A page that is open comes to
    /// the front.
    static HelpPage& open(QWidget& window, const QString& title, const QString& html);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    HelpPage(QWidget& window, const QString& title, const QString& html);
};

/// The keys of the console.
HelpPage& openKeysPage(QWidget& window);
/// The program's version and licence, and the licences of what it is linked with.
HelpPage& openAboutPage(QWidget& window);
