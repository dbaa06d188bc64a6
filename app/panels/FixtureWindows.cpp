#include "panels/FixtureWindows.h"

#include "rig/Fixtures.h"
#include "rig/WindowPlaces.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <iterator>

namespace {

// As many as a rig on one stage mostly has come at once.
constexpr int windowsAtATime = 16;

} // namespace

FixtureWindows::FixtureWindows(Fixtures& fixtures, WindowPlaces& places)
    : fixtures_(fixtures), places_(places) {
    showMore_.setInterval(std::chrono::milliseconds(0));
    connect(&showMore_, &QTimer::timeout, this, &FixtureWindows::showMore);
}

FixtureWindows::~FixtureWindows() = default;

void FixtureWindows::open() {
    connect(&fixtures_, &Fixtures::inserted, this, &FixtureWindows::makeRoom);
    connect(&fixtures_, &Fixtures::aboutToBeRemoved, this, &FixtureWindows::takeAway);
    makeRoom(0, fixtures_.count());
}

QList<FixtureWindow*> FixtureWindows::windows() const {
    QList<FixtureWindow*> windows;
    for (const auto& window : windows_) {
        if (window) {
            windows.append(window.get());
        }
    }
    return windows;
}

FixtureWindow& FixtureWindows::windowOf(const Fixture& fixture) {
    const std::size_t row = fixtures_.rowOf(fixture);
    return windows_.at(row) ? *windows_[row] : show(row);
}

void FixtureWindows::makeRoom(std::size_t row, std::size_t count) {
    std::vector<std::unique_ptr<FixtureWindow>> room(count);
    windows_.insert(windows_.begin() + static_cast<std::ptrdiff_t>(row), std::move_iterator(room.begin()),
                    std::move_iterator(room.end()));
    renameFrom(row + count);
    keyNext_ = count == 0 ? keyNext_ : fixtures_.at(row + count - 1);
    wereTakenOver_ = false;
    showMore_.start();
    showSome();
    if (!areAllShown()) {
        qApp->installEventFilter(this);
        emit changed();
    }
}

// The toolkit closes a menu when a window comes.
void FixtureWindows::showMore() {
    const bool isMenuOpen = QApplication::activePopupWidget();
    showMore_.setInterval(std::chrono::milliseconds(isMenuOpen ? 50 : 0));
    if (!isMenuOpen) {
        showSome();
    }
}

bool FixtureWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
        wereTakenOver_ = true;
    }
    return QObject::eventFilter(watched, event);
}

// Out of the list first: what a window's end sets off must find the list in order.
void FixtureWindows::takeAway(std::size_t row, std::size_t count) {
    for (std::size_t leaving = row; leaving < row + count; ++leaving) {
        keyNext_ = fixtures_.at(leaving) == keyNext_ ? nullptr : keyNext_;
    }
    const auto first = windows_.begin() + static_cast<std::ptrdiff_t>(row);
    const auto last = first + static_cast<std::ptrdiff_t>(count);
    std::vector<std::unique_ptr<FixtureWindow>> leaving{std::move_iterator(first), std::move_iterator(last)};
    windows_.erase(first, last);
    renameFrom(row);
    leaving.clear();
    emit changed();
}

void FixtureWindows::showSome() {
    int shown = 0;
    for (std::size_t row = 0; row < windows_.size() && shown < windowsAtATime; ++row) {
        if (!windows_[row]) {
            show(row);
            ++shown;
        }
    }
    if (!std::ranges::all_of(windows_, [](const auto& window) { return window != nullptr; })) {
        return;
    }
    finish();
}

void FixtureWindows::finish() {
    showMore_.stop();
    qApp->removeEventFilter(this);
    const Fixture* const fixture = std::exchange(keyNext_, nullptr);
    if (fixture && !wereTakenOver_) {
        windowOf(*fixture).makeKey();
    }
    emit changed();
}

FixtureWindow& FixtureWindows::show(std::size_t row) {
    windows_[row] =
        std::make_unique<FixtureWindow>(*fixtures_.at(row), editView_, places_, autosavenameOfRow(row));
    if (wereTakenOver_) {
        windows_[row]->orderIn();
    } else {
        windows_[row]->orderFront();
    }
    return *windows_[row];
}

// Places are remembered by row.
void FixtureWindows::renameFrom(std::size_t row) {
    for (; row < windows_.size(); ++row) {
        if (windows_[row]) {
            windows_[row]->rename(autosavenameOfRow(row));
        }
    }
}
