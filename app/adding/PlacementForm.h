#pragma once

#include "adding/FixtureOrder.h"
#include "patch/Patch.h"

#include <QWidget>

class QLineEdit;
class QSpinBox;

/// Name, universe, address, layer and number of copies of a fixture that is to be added. A name that is free
/// and the first address with room are suggested, and again with every change, until the operator types an
/// own one.
class PlacementForm : public QWidget {
    Q_OBJECT

public:
    /// `patch` are the fixtures that there are; the universe of the last one is suggested.
    explicit PlacementForm(std::vector<PatchedFixture> patch);

    void setPatch(std::vector<PatchedFixture> patch);
    const std::vector<PatchedFixture>& patch() const { return patch_; }
    QStringList takenNames() const;
    /// What is to be placed: its profile, what it may be called and how many slots it takes.
    void setFixture(const QString& profile, const QString& model, std::uint64_t slotsEach);

    const FixtureOrder& order() const { return order_; }

signals:
    void changed();

private:
    QSpinBox* addNumber(const QString& label, int least, int most, int value);
    void addRow(const QString& label, QWidget& field);
    void suggest();
    void read();

    std::vector<PatchedFixture> patch_;
    FixtureOrder order_;
    QString model_;
    QLineEdit* name_ = nullptr;
    QSpinBox* universe_ = nullptr;
    QSpinBox* address_ = nullptr;
    QSpinBox* layer_ = nullptr;
    QSpinBox* copies_ = nullptr;
    bool ownName_ = false;
    bool ownAddress_ = false;
};
