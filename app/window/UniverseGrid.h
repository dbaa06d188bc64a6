#pragma once

#include "output/Engine.h"

#include <QWidget>

#include <cstdint>
#include <optional>
#include <span>

class Fixtures;
class LevelPictures;

/// The 512 slots of one universe as they last went out, 32 in a row. Pointing at a slot, or going there with
/// the arrow keys, names what drives it; a click or Return chooses it.
class UniverseGrid : public QWidget {
    Q_OBJECT

public:
    /// All have to outlive the grid.
    UniverseGrid(std::int32_t universe, const Engine& engine, const Fixtures& fixtures,
                 LevelPictures& pictures);

    std::int32_t universe() const { return universe_; }
    /// Has those slots drawn again that have changed since the last time.
    void refresh();
    /// What there is to say of a slot, counted from 0: its number, its level and who drives it.
    QString slotText(std::size_t slotIndex) const;
    /// Where a slot is drawn.
    QRect slotRect(std::size_t slotIndex) const;

signals:
    void slotChosen(std::int32_t universe, std::size_t slotIndex);
    /// The keys went to the slot that is drawn there.
    void currentSlotMoved(const QRect& place);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintRow(QPainter& painter, std::size_t row, const QRect& due);
    void paintOutline(QPainter& painter) const;
    std::optional<std::size_t> slotAt(QPoint place) const;
    void goToSlot(std::size_t slotIndex);
    void refreshRow(std::size_t first, std::span<const std::uint8_t> levels);

    std::int32_t universe_;
    const Engine& engine_;
    const Fixtures& fixtures_;
    LevelPictures& pictures_;
    std::size_t currentSlot_ = 0; ///< where the keys are
    Engine::SlotLevels shown_;
};
