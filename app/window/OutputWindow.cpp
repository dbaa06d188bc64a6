#include "window/OutputWindow.h"

#include "rig/Fixtures.h"
#include "rig/SlotOwner.h"
#include "window/UniverseGrid.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <set>

namespace {

constexpr std::chrono::milliseconds betweenLooks{33};
constexpr QSize firstSize(970, 720);

} // namespace

OutputWindow::OutputWindow(QWidget& window, const Engine& engine, const Fixtures& fixtures)
    : QWidget(&window, Qt::Window), engine_(engine), fixtures_(fixtures), scroller_(new QScrollArea),
      content_(new QWidget) {
    setWindowTitle("Output");
    resize(firstSize);
    rows_ = new QVBoxLayout(content_);
    rows_->addStretch();
    scroller_->setFocusPolicy(Qt::NoFocus); // its grids take the keys, and scroll it
    scroller_->setWidgetResizable(true);
    scroller_->setFrameShape(QFrame::NoFrame);
    scroller_->setWidget(content_);
    auto* const frame = new QVBoxLayout(this);
    frame->setContentsMargins({});
    frame->addWidget(scroller_);
    timer_.setInterval(betweenLooks);
    connect(&timer_, &QTimer::timeout, this, &OutputWindow::refresh);
}

// In their order.
std::vector<std::int32_t> OutputWindow::patchedUniverses() const {
    std::set<std::int32_t> universes;
    for (const auto& fixture : fixtures_.rows()) {
        universes.insert(static_cast<std::int32_t>(fixture->universe()));
    }
    return {universes.begin(), universes.end()};
}

void OutputWindow::refresh() {
    const std::vector<std::int32_t> universes = patchedUniverses();
    if (!showsAll(universes)) {
        rebuild(universes);
    }
    for (UniverseGrid* const grid : grids_) {
        if (!grid->visibleRegion().isEmpty()) {
            grid->refresh();
        }
    }
}

bool OutputWindow::showsAll(const std::vector<std::int32_t>& universes) const {
    return std::ranges::equal(grids_, universes, {}, &UniverseGrid::universe);
}

void OutputWindow::rebuild(const std::vector<std::int32_t>& universes) {
    qDeleteAll(content_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    grids_.clear();
    for (const std::int32_t universe : universes) {
        addGrid(universe);
    }
}

// Above the stretch, which stays last.
void OutputWindow::addGrid(std::int32_t universe) {
    auto* const grid = new UniverseGrid(universe, engine_, fixtures_, pictures_);
    connect(grid, &UniverseGrid::slotChosen, this, &OutputWindow::selectSlot);
    connect(grid, &UniverseGrid::currentSlotMoved, this, [this, grid](const QRect& place) {
        scroller_->ensureVisible(grid->x() + place.center().x(), grid->y() + place.center().y());
    });
    rows_->insertWidget(rows_->count() - 1, new QLabel(QString("Universe %1").arg(universe)));
    rows_->insertWidget(rows_->count() - 1, grid);
    grids_.push_back(grid);
}

void OutputWindow::selectSlot(std::int32_t universe, std::size_t slotIndex) {
    const SlotOwner owner = ownerOfSlot(fixtures_, universe, slotIndex);
    if (owner.control) {
        emit controlChosen(*owner.fixture, *owner.control);
    }
}

void OutputWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
    timer_.start();
}

void OutputWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    timer_.stop();
}

void OutputWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}
