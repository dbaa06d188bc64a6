#pragma once

#include "artnet/DMX_Universe.h"

#include <QWidget>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

class LevelPictures;

/// The 512 slots of one universe as they last went out, 32 in a row. Pointing at a slot names what drives it,
/// a click tells the slot.
class UniverseGrid : public QWidget {
    Q_OBJECT

public:
    /// `pictures` has to outlive the grid.
    UniverseGrid(std::int32_t universe, LevelPictures& pictures);

    std::int32_t universe() const { return universe_; }
    /// Has those slots drawn again that have changed since the last time.
    void refresh();
    /// What there is to say of a slot, counted from 0: its number, its level and who drives it.
    QString slotText(std::size_t slotIndex) const;
    /// Where a slot is drawn.
    QRect slotRect(std::size_t slotIndex) const;

signals:
    void slotClicked(std::int32_t universe, std::size_t slotIndex);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintRow(QPainter& painter, std::size_t row, const QRect& due);
    std::optional<std::size_t> slotAt(QPoint place) const;
    void refreshRow(std::size_t first, std::span<const std::uint8_t> levels);

    std::int32_t universe_;
    LevelPictures& pictures_;
    std::array<std::uint8_t, DMX_Universe::slotCount> shown_{};
};
