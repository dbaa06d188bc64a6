#include "adding/PlacementForm.h"

#include "levels/Encoding.h"
#include "patch/FreeAddress.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include <limits>

namespace {

constexpr int lastUniverse = 255; // of those that a datagram tells apart
constexpr int lastSlot = slotsPerUniverse;

} // namespace

PlacementForm::PlacementForm(std::vector<PatchedFixture> patch)
    : patch_(std::move(patch)), name_(new QLineEdit) {
    name_->setObjectName("name");
    auto* const rows = new QFormLayout(this);
    rows->setContentsMargins({});
    addRow("&Name", *name_);
    universe_ = addNumber("&Universe", 0, lastUniverse, patch_.empty() ? 0 : patch_.back().universe);
    address_ = addNumber("A&ddress", 1, lastSlot, 1);
    layer_ = addNumber("&Layer", 0, std::numeric_limits<int>::max(), 1);
    copies_ = addNumber("&Copies", 1, lastSlot, 1);
    connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
        ownName_ = !text.isEmpty();
        read();
    });
    connect(address_, &QSpinBox::valueChanged, this, [this] {
        ownAddress_ = true;
        read();
    });
    connect(layer_, &QSpinBox::valueChanged, this, &PlacementForm::read);
    connect(universe_, &QSpinBox::valueChanged, this, &PlacementForm::suggest);
    connect(copies_, &QSpinBox::valueChanged, this, &PlacementForm::suggest);
}

void PlacementForm::addRow(const QString& label, QWidget& field) {
    static_cast<QFormLayout*>(layout())->addRow(label, &field);
}

QSpinBox* PlacementForm::addNumber(const QString& label, int least, int most, int value) {
    auto* const field = new QSpinBox;
    field->setLocale(QLocale::c()); // numbers are typed the same everywhere
    field->setRange(least, most);
    field->setValue(value);
    addRow(label, *field);
    return field;
}

QStringList PlacementForm::takenNames() const {
    QStringList names;
    for (const PatchedFixture& fixture : patch_) {
        names.append(fixture.name);
    }
    return names;
}

void PlacementForm::setPatch(std::vector<PatchedFixture> patch) {
    patch_ = std::move(patch);
    suggest();
}

void PlacementForm::setFixture(const QString& profile, const QString& model, std::uint64_t slotsEach) {
    order_.profile = profile;
    order_.slotsEach = slotsEach;
    model_ = model;
    suggest();
}

// Where there is no room the address stays, and the sheet tells what stands in the way.
void PlacementForm::suggest() {
    if (!ownName_) {
        name_->setText(freeName(model_, copies_->value(), takenNames()));
    }
    const std::uint64_t wanted = order_.slotsEach * static_cast<std::uint64_t>(copies_->value());
    const auto free = firstFreeAddress(patch_, universe_->value(), wanted);
    if (!ownAddress_ && free && *free <= slotsPerUniverse) {
        const QSignalBlocker suggested(address_);
        address_->setValue(static_cast<int>(*free));
    }
    read();
}

void PlacementForm::read() {
    order_.name = name_->text();
    order_.universe = universe_->value();
    order_.address = address_->value();
    order_.layer = layer_->value();
    order_.copies = copies_->value();
    emit changed();
}
