#include "rig/ViewLayout.h"

#include <algorithm>

namespace {

constexpr int columnWidth = 150;
constexpr int rowHeight = 19;

} // namespace

std::vector<QRect> ViewLayout::layOut(std::span<const LayoutItem> items) {
    std::vector<QRect> frames;
    frames.reserve(items.size());
    int y = 0;
    for (const LayoutItem& item : items) {
        if (item.header && !frames.empty()) {
            ++column;
            _size.setHeight(std::max(_size.height(), y));
            y = 0;
        }
        frames.emplace_back(columnWidth * column, y, columnWidth, rowHeight);
        if (!item.hide) {
            y += rowHeight;
        }
    }
    _size = QSize(columnWidth * (column + 1), std::max(_size.height(), y));
    return frames;
}

std::vector<std::uint32_t> consecutiveAddresses(std::uint32_t address, std::span<const LayoutItem> items) {
    std::vector<std::uint32_t> addresses;
    addresses.reserve(items.size());
    std::uint64_t slot = address == 0 ? 0 : address - 1;
    for (const LayoutItem& item : items) {
        addresses.push_back(static_cast<std::uint32_t>(std::min<std::uint64_t>(slot, UINT32_MAX)));
        slot += item.channels;
    }
    return addresses;
}
