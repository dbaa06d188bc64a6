#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// A number while it is being typed: a level, or a fade time when it is ended with S.
class NumericEntry {
public:
    /// What a finished entry asks for; at most one of the two stands.
    struct Outcome {
        std::optional<std::uint32_t> value; ///< a level, 0..max
        std::optional<float> time;          ///< a fade time in seconds, 0 or more
    };

    /// Takes a digit or a point; the seventh character and all after it are dropped.
    void append(char character);
    void removeLast();
    /// Forgets the characters. Whether the next number is a time stays as it is.
    void clear();

    /// The next number to be finished is a fade time. Stays so until one is finished, on purpose also
    /// across clear().
    void setTimeMode();

    /// Reads the number. Fewer than one or more than five characters ask for nothing; six are discarded on
    /// purpose. A level is rounded to the nearest and limited to `max`; a point alone is level 0 and no
    /// time. The characters stay until clear().
    Outcome finish(std::uint32_t max);

    bool empty() const { return bufindex == 0; }
    std::string_view text() const { return {numbuf.data(), bufindex}; }

private:
    std::array<char, 8> numbuf{};
    std::uint32_t bufindex = 0;
    bool time_mode = false;
};
