#pragma once

#include <cstdlib>

/// What has to hold for every input; the fuzzer keeps the one for which it does not.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}
