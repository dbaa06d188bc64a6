#include "support/StandardOutput.h"

#include <QTemporaryFile>

#include <unistd.h>

#include <cstdio>

namespace {

QByteArray caught(std::FILE* stream, int descriptor, const std::function<void()>& action) {
    QTemporaryFile file;
    if (!file.open()) {
        return "no temporary file to catch the output in";
    }
    std::fflush(stream);
    const int original = dup(descriptor);
    dup2(file.handle(), descriptor);
    action();
    std::fflush(stream);
    dup2(original, descriptor);
    close(original);
    file.seek(0);
    return file.readAll();
}

} // namespace

QByteArray standardOutputOf(const std::function<void()>& action) {
    return caught(stdout, STDOUT_FILENO, action);
}

QByteArray standardErrorOf(const std::function<void()>& action) {
    return caught(stderr, STDERR_FILENO, action);
}
