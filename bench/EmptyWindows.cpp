// Opens empty windows of the toolkit as the console opens those of fixtures, and waits to be ended: what so
// many windows take on this display whatever is in them.
//
//     faderhall_empty_windows COUNT WIDTH HEIGHT

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

std::unique_ptr<QWidget> emptyWindow(int number, QSize size) {
    auto window =
        std::make_unique<QWidget>(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    window->setWindowTitle(QString("Empty %1").arg(number));
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setFixedSize(size);
    QRect centred(QPoint(0, 0), size);
    centred.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    window->move(centred.topLeft());
    return window;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4) {
        return EXIT_FAILURE;
    }
    const QSize size(arguments[2].toInt(), arguments[3].toInt());
    std::vector<std::unique_ptr<QWidget>> windows;
    for (int number = 0; number < arguments[1].toInt(); ++number) {
        windows.push_back(emptyWindow(number, size));
        windows.back()->show();
        windows.back()->raise();
    }
    return QApplication::exec();
}
