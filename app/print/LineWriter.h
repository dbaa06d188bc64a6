#pragma once

#include "print/LineQueue.h"

#include <array>
#include <cstddef>

/// Writes lines to the descriptors that they are for and waits for the readers. A line that cannot be written
/// is counted, and the count is told before the next line that can.
class LineWriter {
public:
    void write(const PrintedLine& line);

private:
    std::array<std::size_t, 2> missing_{}; ///< lines not written yet to be told of: on output, on error
};
