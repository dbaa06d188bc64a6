#include "plist/BinaryObjectTable.h"

namespace {

constexpr std::uint64_t headerSize = 8;
constexpr std::uint64_t trailerSize = 32;

using Kind = BinaryObject::Kind;

// A scalar of a length that its type fixes; `valid` tells whether the marker's low half is one of the type's.
std::optional<BinaryObject> scalar(bool valid, std::uint64_t start, std::uint64_t bytes) {
    return valid ? std::optional(BinaryObject{.contents = start + 1, .bytes = bytes}) : std::nullopt;
}

} // namespace

std::uint64_t BinaryObject::references() const {
    switch (kind) {
    case Kind::array:
        return entries;
    case Kind::dictionary:
        return 2 * entries;
    default:
        return 0;
    }
}

// An unsigned number of 1 to 8 bytes, most significant first.
std::uint64_t BinaryObjectTable::number(std::uint64_t position, std::uint64_t size) const {
    std::uint64_t value = 0;
    for (const char byte : file_.sliced(static_cast<qsizetype>(position), static_cast<qsizetype>(size))) {
        value = value << 8U | static_cast<std::uint8_t>(byte);
    }
    return value;
}

bool BinaryObjectTable::readTrailer(std::uint64_t maxObjects) {
    const auto size = static_cast<std::uint64_t>(file_.size());
    if (size < headerSize + trailerSize) {
        return false;
    }
    const std::uint64_t trailer = size - trailerSize;
    offsetSize_ = number(trailer + 6, 1);
    referenceSize_ = number(trailer + 7, 1);
    count_ = number(trailer + 8, 8);
    root_ = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    const auto isWidth = [](std::uint64_t width) { return width >= 1 && width <= 8; };
    return isWidth(offsetSize_) && isWidth(referenceSize_) && count_ <= maxObjects && root_ < count_ &&
           table_ > headerSize && table_ <= trailer && count_ * offsetSize_ <= trailer - table_;
}

std::optional<BinaryObject> BinaryObjectTable::object(std::uint64_t index) const {
    if (index >= count_) {
        return std::nullopt;
    }
    const std::uint64_t start = number(table_ + index * offsetSize_, offsetSize_);
    if (start < headerSize || start >= table_) {
        return std::nullopt;
    }
    const std::optional<BinaryObject> found = objectAt(start);
    const bool fits = found && found->contents <= table_ && found->bytes <= table_ - found->contents;
    return fits ? found : std::nullopt;
}

std::optional<BinaryObject> BinaryObjectTable::objectAt(std::uint64_t start) const {
    const auto marker = static_cast<std::uint8_t>(number(start, 1));
    const auto type = static_cast<std::uint8_t>(marker >> 4U);
    const std::uint64_t low = marker & 0xFU;
    switch (type) {
    case 0x0: // false and true
        return scalar(low == 8 || low == 9, start, 0);
    case 0x1: // integer of 1, 2, 4, 8 or 16 bytes
        return scalar(low <= 4, start, std::uint64_t{1} << low);
    case 0x2: // real of 4 or 8 bytes
        return scalar(low == 2 || low == 3, start, std::uint64_t{1} << low);
    case 0x3: // date of 8 bytes
        return scalar(low == 3, start, 8);
    case 0x8: // reference by number, of 1 to 8 bytes
        return scalar(low <= 7, start, low + 1);
    default:
        return counted(type, start + 1, low);
    }
}

// An object that carries its length: in the marker's low half, or when that is 15, in an integer behind it.
std::optional<BinaryObject> BinaryObjectTable::counted(std::uint8_t type, std::uint64_t position,
                                                       std::uint64_t count) const {
    if (count == 0xF) {
        const std::uint64_t marker = position < table_ ? number(position, 1) : 0;
        const std::uint64_t width = std::uint64_t{1} << (marker & 0xFU);
        if (marker >> 4U != 0x1 || width > 8 || width > table_ - position - 1) {
            return std::nullopt;
        }
        count = number(position + 1, width);
        position += 1 + width;
    }
    if (count > table_) { // keeps the products below from wrapping
        return std::nullopt;
    }
    const auto object = [&](Kind kind, std::uint64_t unit) {
        return BinaryObject{.kind = kind, .contents = position, .bytes = count * unit, .entries = count};
    };
    switch (type) {
    case 0x4: // data
        return object(Kind::scalar, 1);
    case 0x5:
        return object(Kind::asciiString, 1);
    case 0x6:
        return object(Kind::utf16String, 2);
    case 0xA:
        return object(Kind::array, referenceSize_);
    case 0xD:
        return object(Kind::dictionary, 2 * referenceSize_);
    default:
        return std::nullopt;
    }
}

std::uint64_t BinaryObjectTable::reference(const BinaryObject& container, std::uint64_t index) const {
    return number(container.contents + index * referenceSize_, referenceSize_);
}

bool BinaryObjectTable::holdsNul(const BinaryObject& string) const {
    const std::uint64_t unit = string.kind == Kind::utf16String ? 2 : 1;
    for (std::uint64_t at = 0; at < string.bytes; at += unit) {
        if (number(string.contents + at, unit) == 0) {
            return true;
        }
    }
    return false;
}
