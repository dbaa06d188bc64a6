#include "window/HelpPage.h"

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>

namespace {

constexpr QSize pageSize(560, 720);

// The pages are built in.
QString pageText(const QString& name) {
    QFile file(":/help/" + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

HelpPage::HelpPage(QWidget& window, const QString& title, const QString& html) : QTextBrowser(&window) {
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    setFrameShape(QFrame::NoFrame);
    resize(pageSize);
    setHtml(html);
}

HelpPage& HelpPage::open(QWidget& window, const QString& title, const QString& html) {
    for (HelpPage* const page : window.findChildren<HelpPage*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (page->windowTitle() == title) {
            page->raise();
            page->activateWindow();
            return *page;
        }
    }
    auto* const page = new HelpPage(window, title, html); // owned by the window, and goes when it is closed
    page->show();
    return *page;
}

void HelpPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QTextBrowser::keyPressEvent(event);
}

HelpPage& openKeysPage(QWidget& window) {
    return HelpPage::open(window, "Keys", pageText("keys.html"));
}

HelpPage& openAboutPage(QWidget& window) {
    const QString text = pageText("about.html")
                             .replace("%VERSION%", QCoreApplication::applicationVersion())
                             .replace("%QT%", qVersion());
    return HelpPage::open(window, "About Faderhall", text);
}
