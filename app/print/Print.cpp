#include "print/Print.h"

#include "print/LineQueue.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace {

constexpr std::chrono::milliseconds lastMoment(200);

// The streams are the process's own, and so is the way to them.
std::mutex gMutex;
std::shared_ptr<LineQueue> gQueue;

std::shared_ptr<LineQueue> presentQueue() {
    const std::lock_guard lock(gMutex);
    return gQueue;
}

void print(int descriptor, std::FILE* stream, std::string_view line) {
    if (const auto queue = presentQueue()) {
        queue->push(descriptor, line);
        return;
    }
    std::string text(line);
    text.push_back('\n'); // in one go, since standard error keeps nothing back
    std::fwrite(text.data(), 1, text.size(), stream);
}

} // namespace

void printLine(std::string_view line) {
    print(STDOUT_FILENO, stdout, line);
}

void printError(std::string_view line) {
    print(STDERR_FILENO, stderr, line);
}

bool finishPrinting() {
    const auto queue = presentQueue();
    return !queue || queue->waitUntilWritten(lastMoment);
}

void printThrough(std::shared_ptr<LineQueue> queue) {
    const std::lock_guard lock(gMutex);
    gQueue = std::move(queue);
}
