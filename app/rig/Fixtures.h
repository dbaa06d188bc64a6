#pragma once

#include "rig/Fixture.h"

#include <QObject>
#include <QVariantList>

#include <functional>
#include <memory>
#include <vector>

class Engine;
class Faders;
class Profiles;

/// Every fixture of the rig, by rows, a new one last. What goes out to the network follows: fixtures that
/// come or go together do so in one tick.
class Fixtures : public QObject {
    Q_OBJECT

public:
    using Rows = std::vector<std::unique_ptr<Fixture>>;

    /// All have to outlive the fixtures.
    Fixtures(Engine& engine, Faders& faders, const Profiles& profiles);
    ~Fixtures() override;

    const Rows& rows() const { return rows_; }
    std::size_t count() const { return rows_.size(); }
    /// Null where there is none.
    Fixture* at(std::size_t row) const { return row < rows_.size() ? rows_[row].get() : nullptr; }
    /// Its row; count() for one that is not here.
    std::size_t rowOf(const Fixture& fixture) const;

    /// Adds a fixture below the others.
    Fixture& add(const QVariantMap& placement);
    /// Inserts so many before the one in `row`. `prepare` is called before the first of their levels goes
    /// out.
    void insert(std::size_t row, const QVariantList& placements, const std::function<void()>& prepare = {});
    /// Takes so many away, from `row` on. Where a fader of another fixture has the key of one of them, that
    /// one is found under it from now on. They have to be there.
    void remove(std::size_t row, std::size_t count);
    /// Puts these in the place of all that there are, in one tick. `prepare` is called when the faders are
    /// the new ones, before any of their levels goes out.
    void replaceAll(const QVariantList& placements, const std::function<void()>& prepare = {});

    /// Has whoever shows a fixture told of the levels that moved.
    void tellMoved() const;

signals:
    /// Fixtures have come before `row`.
    void inserted(std::size_t row, std::size_t count);
    /// Those fixtures are about to go, and so whoever shows them has to.
    void aboutToBeRemoved(std::size_t row, std::size_t count);

private:
    Rows made(const QVariantList& placements);
    ExpansionSize roomForFixture(const Rows& made) const;
    void registerInRowOrder(const Fixture& changed) const;
    void forgetSelectionOf(const Fixture& leaving) const;
    void publish();

    Engine& engine_;
    Faders& faders_;
    const Profiles& profiles_;
    Rows rows_;
};
