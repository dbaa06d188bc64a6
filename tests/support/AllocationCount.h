#pragma once

#include <cstddef>

/// How often operator new has run in this program so far. Linking this counts them.
std::size_t allocationCount();
