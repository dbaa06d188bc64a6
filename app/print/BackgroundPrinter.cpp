#include "print/BackgroundPrinter.h"

#include "print/LineQueue.h"
#include "print/LineWriter.h"
#include "print/Print.h"

#include <memory>
#include <system_error>
#include <thread>

namespace {

void writeLines(const std::shared_ptr<LineQueue>& queue) {
    LineWriter writer;
    while (const auto line = queue->next()) {
        writer.write(*line);
    }
}

} // namespace

BackgroundPrinter::BackgroundPrinter(std::size_t bytes) : queue_(std::make_shared<LineQueue>(bytes)) {
    try {
        // Never joined: it may be held up for good.
        std::thread(writeLines, queue_).detach();
        printThrough(queue_);
    } catch (const std::system_error&) {
        return; // no thread to be had: lines are written at once, as without us
    }
}

// With a reader that stands still the queue stays where it is: what is printed from here on must not wait
// either.
BackgroundPrinter::~BackgroundPrinter() {
    if (finishPrinting()) {
        printThrough(nullptr);
    }
    queue_->close();
}
