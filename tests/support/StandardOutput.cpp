#include "support/StandardOutput.h"

#include <QTemporaryFile>

#include <unistd.h>

#include <cstdio>

QByteArray standardOutputOf(const std::function<void()>& action) {
    QTemporaryFile file;
    if (!file.open()) {
        return "no temporary file to catch the output in";
    }
    std::fflush(stdout);
    const int original = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    action();
    std::fflush(stdout);
    dup2(original, STDOUT_FILENO);
    close(original);
    file.seek(0);
    return file.readAll();
}
