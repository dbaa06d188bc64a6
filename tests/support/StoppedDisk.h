#pragma once

/// Holds up every fsync() of the program until it is let go on, or the object ends: a disk that takes its
/// time. The program that links it has an fsync() of its own, which writes through to no disk at all.
class StoppedDisk {
public:
    StoppedDisk();
    ~StoppedDisk() { letGoOn(); }
    StoppedDisk(const StoppedDisk&) = delete;
    StoppedDisk& operator=(const StoppedDisk&) = delete;

    /// Whether somebody waits for the disk.
    bool isWaitedFor() const;
    void letGoOn();
    /// The same, but the sync that was waiting fails.
    void fail();
};
