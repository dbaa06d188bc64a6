#pragma once

#include "window/LevelPictures.h"

#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <vector>

class DMXControl;
class Engine;
class Fixture;
class Fixtures;
class QScrollArea;
class QVBoxLayout;
class UniverseGrid;

/// The slots of every universe that fixtures are patched to, as they last went out. Looks about 30 times a
/// second while it is on the screen, and not at all otherwise.
class OutputWindow : public QWidget {
    Q_OBJECT

public:
    /// A window of its own that goes with `window`. All have to outlive it.
    OutputWindow(QWidget& window, const Engine& engine, const Fixtures& fixtures);

    /// Brings the grids in line with the patch and what can be seen of them with the output.
    void refresh();
    const std::vector<UniverseGrid*>& grids() const { return grids_; }

signals:
    /// A slot of that fader was chosen.
    void controlChosen(Fixture& fixture, DMXControl& control);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool showsAll(const std::vector<std::int32_t>& universes) const;
    void rebuild(const std::vector<std::int32_t>& universes);
    void addGrid(std::int32_t universe);
    void selectSlot(std::int32_t universe, std::size_t slotIndex);

    std::vector<std::int32_t> patchedUniverses() const;

    const Engine& engine_;
    const Fixtures& fixtures_;
    LevelPictures pictures_;
    QScrollArea* scroller_;
    QWidget* content_;
    QVBoxLayout* rows_;
    std::vector<UniverseGrid*> grids_; ///< owned by the content
    QTimer timer_;
};
