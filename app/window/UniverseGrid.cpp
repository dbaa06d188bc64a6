#include "window/UniverseGrid.h"

#include "panels/Colours.h"
#include "rig/Fixture.h"
#include "rig/SlotOwner.h"
#include "window/LevelPictures.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr std::size_t columns = 32;
constexpr std::size_t rows = DMX_Universe::slotCount / columns;
constexpr int numbersWidth = 40; // the number of a row's first slot stands before it

int pixels(std::size_t count, int each) {
    return static_cast<int>(count) * each;
}

// Where a key leads from a slot; nothing for one that is no step.
std::optional<std::size_t> slotAfterKey(std::size_t slotIndex, int key) {
    constexpr std::size_t last = DMX_Universe::slotCount - 1;
    switch (key) {
    case Qt::Key_Left:
        return slotIndex == 0 ? 0 : slotIndex - 1;
    case Qt::Key_Right:
        return std::min(slotIndex + 1, last);
    case Qt::Key_Up:
        return slotIndex < columns ? slotIndex : slotIndex - columns;
    case Qt::Key_Down:
        return slotIndex + columns > last ? slotIndex : slotIndex + columns;
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return {};
    }
}

} // namespace

UniverseGrid::UniverseGrid(std::int32_t universe, const Engine& engine, const Fixtures& fixtures,
                           LevelPictures& pictures)
    : universe_(universe), engine_(engine), fixtures_(fixtures), pictures_(pictures),
      shown_(engine.slotLevels(universe)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(numbersWidth + pixels(columns, LevelPictures::size.width()),
                 pixels(rows, LevelPictures::size.height()));
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QString("Slots of universe %1").arg(universe));
}

QRect UniverseGrid::slotRect(std::size_t slotIndex) const {
    return {QPoint(numbersWidth + pixels(slotIndex % columns, LevelPictures::size.width()),
                   pixels(slotIndex / columns, LevelPictures::size.height())),
            LevelPictures::size};
}

std::optional<std::size_t> UniverseGrid::slotAt(QPoint place) const {
    if (place.x() < numbersWidth || !rect().contains(place)) {
        return {};
    }
    const int column = (place.x() - numbersWidth) / LevelPictures::size.width();
    const int row = place.y() / LevelPictures::size.height();
    return static_cast<std::size_t>(row) * columns + static_cast<std::size_t>(column);
}

void UniverseGrid::refresh() {
    const Engine::SlotLevels now = engine_.slotLevels(universe_);
    const std::span<const std::uint8_t> levels(now);
    for (std::size_t first = 0; first < levels.size(); first += columns) {
        refreshRow(first, levels.subspan(first, columns));
    }
}

// One rectangle for each row: a region of single slots would cost more than it saves.
void UniverseGrid::refreshRow(std::size_t first, std::span<const std::uint8_t> levels) {
    QRect changed;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (shown_.at(first + i) != levels[i]) {
            shown_.at(first + i) = levels[i];
            changed |= slotRect(first + i);
        }
    }
    if (!changed.isNull()) {
        update(changed);
    }
}

void UniverseGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (const QRect& due : event->region()) {
        const auto firstRow = static_cast<std::size_t>(due.top() / LevelPictures::size.height());
        const auto lastRow = static_cast<std::size_t>(due.bottom() / LevelPictures::size.height());
        for (std::size_t row = firstRow; row <= std::min(lastRow, rows - 1); ++row) {
            paintRow(painter, row, due);
        }
    }
    if (hasFocus()) {
        paintOutline(painter);
    }
}

void UniverseGrid::paintOutline(QPainter& painter) const {
    painter.setPen(gHighlight);
    painter.drawRect(slotRect(currentSlot_).adjusted(0, 0, -1, -1));
}

void UniverseGrid::paintRow(QPainter& painter, std::size_t row, const QRect& due) {
    const std::size_t first = row * columns;
    for (std::size_t slot = first; slot < first + columns; ++slot) {
        const QRect place = slotRect(slot);
        if (place.intersects(due)) {
            painter.drawPixmap(place.topLeft(), pictures_.picture(shown_.at(slot), devicePixelRatioF()));
        }
    }
    const QRect numbers(0, slotRect(first).top(), numbersWidth, LevelPictures::size.height());
    if (numbers.intersects(due)) {
        constexpr int toTheSlots = 6;
        painter.fillRect(numbers, gBackgroundColour);
        painter.setPen(gTextColor);
        painter.drawText(numbers.adjusted(0, 0, -toTheSlots, 0), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(first + 1));
    }
}

QString UniverseGrid::slotText(std::size_t slotIndex) const {
    const QString text =
        QString("Universe %1, slot %2: %3").arg(universe_).arg(slotIndex + 1).arg(shown_.at(slotIndex));
    const SlotOwner owner = ownerOfSlot(fixtures_, universe_, slotIndex);
    return owner.control ? text + QString("\n%1 %2").arg(owner.fixture->name(), owner.control->name()) : text;
}

bool UniverseGrid::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const auto slot = slotAt(help.pos());
    QToolTip::showText(help.globalPos(), slot ? slotText(*slot) : QString(), this,
                       slot ? slotRect(*slot) : QRect());
    return true;
}

void UniverseGrid::mousePressEvent(QMouseEvent* event) {
    const auto slot = slotAt(event->position().toPoint());
    if (slot && event->button() == Qt::LeftButton) {
        goToSlot(*slot);
        emit slotChosen(universe_, *slot);
    }
}

void UniverseGrid::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        emit slotChosen(universe_, currentSlot_);
        return;
    }
    const auto slot = slotAfterKey(currentSlot_, key);
    if (!slot) {
        return QWidget::keyPressEvent(event);
    }
    goToSlot(*slot);
    const QRect place = slotRect(*slot);
    emit currentSlotMoved(place);
    QToolTip::showText(mapToGlobal(place.bottomLeft()), slotText(*slot), this, place);
}

// Said aloud as the grid's description.
void UniverseGrid::goToSlot(std::size_t slotIndex) {
    update(slotRect(currentSlot_));
    currentSlot_ = slotIndex;
    update(slotRect(currentSlot_));
    setAccessibleDescription(slotText(slotIndex));
}
