#include "rig/WindowPlaces.h"

#include <algorithm>
#include <vector>

QString autosavenameOfRow(std::size_t row) {
    return QString("faderhall_window_%1").arg(row);
}

// All are read before the first is written.
void rotatePlaces(WindowPlaces& places, std::size_t first, std::size_t middle, std::size_t last) {
    std::vector<std::optional<QPoint>> moved;
    for (std::size_t row = first; row < last; ++row) {
        moved.push_back(places.place(autosavenameOfRow(row)));
    }
    std::rotate(moved.begin(), moved.begin() + static_cast<std::ptrdiff_t>(middle - first), moved.end());
    for (std::size_t row = first; row < last; ++row) {
        if (const auto& place = moved[row - first]) {
            places.setPlace(autosavenameOfRow(row), *place);
        } else {
            places.forgetPlace(autosavenameOfRow(row));
        }
    }
}
