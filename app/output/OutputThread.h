#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

class Engine;

/// The heartbeat of the output: ticks an engine on the grid of nextTickDue(), on a thread of its own, for as
/// long as it lives. The first tick comes 33.3 ms after the start.
class OutputThread {
public:
    /// `engine` has to outlive the thread. Throws std::system_error where the system gives no thread.
    explicit OutputThread(Engine& engine);
    ~OutputThread();
    OutputThread(const OutputThread&) = delete;
    OutputThread& operator=(const OutputThread&) = delete;
    OutputThread(OutputThread&&) = delete;
    OutputThread& operator=(OutputThread&&) = delete;

private:
    void run();
    bool waitFor(std::uint64_t due);

    Engine& engine_;
    std::mutex lock_;
    std::condition_variable ended_;
    bool isEnded_ = false;
    std::thread thread_;
};
