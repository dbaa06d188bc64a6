#include "artnet/Address.h"

#include <algorithm>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::uint32_t octetLimit = 256;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool takeCharacter(std::string_view& text, char wanted) {
    if (!text.starts_with(wanted)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

/// Takes the digits off the front of the text. Stays at 256 once it is there, so that no number of digits
/// wraps around into the octets again. Nothing without a digit.
std::optional<std::uint32_t> takeDigits(std::string_view& text) {
    if (text.empty() || !isDigit(text.front())) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        number = std::min(number * 10 + static_cast<std::uint32_t>(text.front() - '0'), octetLimit);
    }
    return number;
}

/// Takes one signed number with the white space before it off the front of the text; nothing unless it is
/// 0..255.
std::optional<std::uint32_t> takeOctet(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    const bool negative = takeCharacter(text, '-');
    if (!negative) {
        takeCharacter(text, '+');
    }
    const auto number = takeDigits(text);
    if (!number || *number >= octetLimit || (negative && *number != 0)) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::optional<std::uint32_t> parseAddress(std::string_view text) {
    std::uint32_t address = 0;
    for (int index = 0; index < 4; ++index) {
        if (index > 0 && !takeCharacter(text, '.')) {
            return std::nullopt;
        }
        const auto octet = takeOctet(text);
        if (!octet) {
            return std::nullopt;
        }
        address = address << 8 | *octet;
    }
    return address;
}

std::string printAddress(std::uint32_t address) {
    std::string text = std::to_string(address >> 24);
    for (const int shift : {16, 8, 0}) {
        text += '.' + std::to_string(address >> shift & 0xFF);
    }
    return text;
}
