#include "commands/Answers.h"

#include <cstdio>
#include <cstdlib>

int refuse(const QString& program, const QString& reason) {
    std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", qUtf8Printable(program), qUtf8Printable(reason),
                 qUtf8Printable(program));
    return EXIT_FAILURE;
}

int answer(const QString& text) {
    std::printf("%s\n", qUtf8Printable(text.trimmed()));
    return EXIT_SUCCESS;
}
