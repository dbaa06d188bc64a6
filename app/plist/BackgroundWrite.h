#pragma once

#include <functional>
#include <future>

/// Has a file written by a thread of its own, one writing at a time, so that nobody waits for a slow disk.
/// What the thread reads has to be its own: values, or what nobody else touches before the end.
class BackgroundWrite {
public:
    BackgroundWrite() = default;
    /// Waits for the end, like finish().
    ~BackgroundWrite() = default;
    BackgroundWrite(const BackgroundWrite&) = delete;
    BackgroundWrite& operator=(const BackgroundWrite&) = delete;

    /// Begins a writing; `write` returns whether it succeeded. The one before has to be finished. False when
    /// no thread is to be had and nothing begins.
    bool start(std::function<bool()> write);
    bool isRunning() const;
    /// Waits for the end. False when what was begun since the last call has failed.
    bool finish();

private:
    std::future<bool> writing_; ///< waits for its thread when it goes
};
