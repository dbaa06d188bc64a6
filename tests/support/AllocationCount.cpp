#include "support/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t gAllocations = 0;

} // namespace

std::size_t allocationCount() {
    return gAllocations;
}

// The other forms of new and delete, those of arrays among them, end in these.
void* operator new(std::size_t size) {
    ++gAllocations;
    if (void* memory = std::malloc(size > 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
