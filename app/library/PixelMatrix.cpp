#include "library/PixelMatrix.h"

#include "library/FixtureDefinition.h"
#include "library/KeyOrder.h"

#include <QCollator>
#include <QJsonArray>

#include <algorithm>

namespace {

constexpr QLatin1StringView eachPixel("eachPixel");

// "3", "(2, 1)" or "(2, 1, 4)": only the directions that have more than one pixel count.
QString defaultKey(const std::vector<int>& position, const std::vector<int>& sizes) {
    QStringList numbers;
    for (std::size_t axis = 0; axis < sizes.size(); ++axis) {
        if (sizes[axis] > 1) {
            numbers.append(QString::number(position[axis] + 1));
        }
    }
    if (numbers.isEmpty()) {
        return "1";
    }
    return numbers.size() == 1 ? numbers.first() : '(' + numbers.join(", ") + ')';
}

} // namespace

PixelMatrix::PixelMatrix(const QJsonObject& matrix, const QByteArray& json) {
    if (matrix.contains("pixelKeys")) {
        name(matrix.value("pixelKeys").toArray());
    } else if (matrix.contains("pixelCount")) {
        count(matrix.value("pixelCount").toArray());
    }
    if (matrix.contains("pixelGroups")) {
        groups_ = keysInOrder(json, "pixelGroups");
    }
}

void PixelMatrix::count(const QJsonArray& sizes) {
    std::vector<int> counts;
    qint64 product = 1;
    for (qsizetype axis = 0; axis < 3; ++axis) {
        const int size = sizes.at(axis).toInt(0);
        counts.push_back(size);
        product = size < 1 || size > static_cast<int>(FixtureBounds::slotsOfMode) ? 0 : product * size;
    }
    if (product < 1 || product > static_cast<qint64>(FixtureBounds::slotsOfMode)) {
        refusal_ = QString("its matrix does not have 1 to %1 pixels").arg(FixtureBounds::slotsOfMode);
        return;
    }
    for (int z = 0; z < counts[2]; ++z) {
        for (int y = 0; y < counts[1]; ++y) {
            for (int x = 0; x < counts[0]; ++x) {
                add(defaultKey({x, y, z}, counts), {x, y, z});
            }
        }
    }
}

void PixelMatrix::name(const QJsonArray& layers) {
    for (int z = 0; z < layers.size(); ++z) {
        const QJsonArray rows = layers.at(z).toArray();
        for (int y = 0; y < rows.size(); ++y) {
            const QJsonArray keys = rows.at(y).toArray();
            for (int x = 0; x < keys.size(); ++x) {
                if (keys.at(x).isString()) { // null stands for a place without a pixel
                    add(keys.at(x).toString(), {x, y, z});
                }
            }
        }
    }
}

void PixelMatrix::add(const QString& key, std::vector<int> position) {
    if (pixels_.size() == FixtureBounds::slotsOfMode) {
        refusal_ = QString("its matrix has more than %1 pixels").arg(FixtureBounds::slotsOfMode);
    } else {
        pixels_.push_back({.key = key, .position = std::move(position)});
    }
}

QStringList PixelMatrix::allKeys() const {
    QStringList keys = groups_;
    for (const Pixel& pixel : pixels_) {
        keys.append(pixel.key);
    }
    return keys;
}

QStringList PixelMatrix::keysFor(const QString& repeatFor) const {
    if (repeatFor == QLatin1StringView("eachPixelGroup")) {
        return groups_;
    }
    if (repeatFor == QLatin1StringView("eachPixelABC")) {
        return keysByAlphabet();
    }
    return repeatFor.startsWith(eachPixel) ? keysByPosition(repeatFor.mid(eachPixel.size())) : QStringList();
}

// "XYZ": along X first, then the next row in Y, then the next layer in Z.
QStringList PixelMatrix::keysByPosition(const QString& axes) const {
    std::vector<std::size_t> order;
    for (const QChar axis : {QChar('X'), QChar('Y'), QChar('Z')}) {
        if (axes.size() != 3 || !axes.contains(axis)) {
            return {};
        }
    }
    for (qsizetype i = 2; i >= 0; --i) {
        order.push_back(static_cast<std::size_t>(axes.at(i).unicode() - u'X'));
    }
    std::vector<Pixel> pixels = pixels_;
    std::ranges::stable_sort(pixels, [&](const Pixel& one, const Pixel& other) {
        const auto differs = std::ranges::find_if(
            order, [&](std::size_t axis) { return one.position[axis] != other.position[axis]; });
        return differs != order.end() && one.position[*differs] < other.position[*differs];
    });
    QStringList keys;
    for (const Pixel& pixel : pixels) {
        keys.append(pixel.key);
    }
    return keys;
}

QStringList PixelMatrix::keysByAlphabet() const {
    QCollator collator{QLocale(QLocale::English)};
    collator.setNumericMode(true);
    QStringList keys;
    for (const Pixel& pixel : pixels_) {
        keys.append(pixel.key);
    }
    std::ranges::stable_sort(keys, collator);
    return keys;
}
