#pragma once

#include <sys/resource.h>

/// Lets the program open no further file or socket as long as it lives.
class NoMoreDescriptors {
public:
    NoMoreDescriptors();
    ~NoMoreDescriptors();
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

private:
    rlimit original_{};
};
