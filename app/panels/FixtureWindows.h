#pragma once

#include "panels/EditView.h"
#include "panels/FixtureWindow.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

class Fixtures;
class WindowPlaces;

/// The windows of all fixtures, by rows. Each comes up before the others; of those that come together the
/// last one ends with the keys. Where many come, they come a few at a time, and events are handled in
/// between: once the operator works meanwhile, what still comes leaves the front and the keys where they are.
class FixtureWindows : public QObject {
    Q_OBJECT

public:
    /// Both have to outlive the windows.
    FixtureWindows(Fixtures& fixtures, WindowPlaces& places);
    ~FixtureWindows() override;

    /// Shows the windows of all fixtures, and from now on of those that come.
    void open();

    /// Null while the window is still on its way, and where there is no such row.
    FixtureWindow* at(std::size_t row) const { return row < windows_.size() ? windows_[row].get() : nullptr; }
    /// Those that are there, in their order.
    QList<FixtureWindow*> windows() const;
    bool areAllShown() const { return !showMore_.isActive(); }
    /// The window of a fixture, made now if it is still on its way.
    FixtureWindow& windowOf(const Fixture& fixture);
    /// True when the operator worked while the windows that came last were coming.
    bool wereTakenOver() const { return wereTakenOver_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The first windows have come of those that had to; or all of them; or some have gone.
    void changed();

private:
    void makeRoom(std::size_t row, std::size_t count);
    void takeAway(std::size_t row, std::size_t count);
    void showMore();
    void showSome();
    void finish();
    FixtureWindow& show(std::size_t row);
    void renameFrom(std::size_t row);

    Fixtures& fixtures_;
    WindowPlaces& places_;
    EditView editView_;
    std::vector<std::unique_ptr<FixtureWindow>> windows_;
    const Fixture* keyNext_ = nullptr; ///< which is to have the keys in the end
    bool wereTakenOver_ = false;
    QTimer showMore_;
};
