#include "support/NoMoreDescriptors.h"

NoMoreDescriptors::NoMoreDescriptors() {
    getrlimit(RLIMIT_NOFILE, &original_);
    const rlimit none{.rlim_cur = 0, .rlim_max = original_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
}

NoMoreDescriptors::~NoMoreDescriptors() {
    setrlimit(RLIMIT_NOFILE, &original_);
}
