// Saves as the console does, for those who kill it, fill its disk or let its system calls fail meanwhile:
//
//   saver FILE COUNT
//
// takes away what a killed run left, prints a line, waits for one on standard input and then saves COUNT
// generations, each with the number after the one that stands in the file. Prints a line for each one that is
// saved; the first that is not ends the program with status 1.

#include "plist/DictionaryFile.h"
#include "plist/WholeFile.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr QLatin1StringView generationKey("generation");

// Generations differ in size, so that parts of two of them do not make a whole one.
QVariantMap generation(int number) {
    constexpr qsizetype unit = 8192;
    constexpr int sizes = 7;
    return {{generationKey, number},
            {"filling", QString((number % sizes + 1) * unit, QChar(u'0' + number % 10))}};
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("saver FILE COUNT\n", stderr);
        return EXIT_FAILURE;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    removeUnfinishedFiles(path);
    const DictionaryFile file(path);
    int number = file.read().value_or(QVariantMap()).value(generationKey).toInt();
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    for (int left = std::atoi(argv[2]); left > 0; --left) {
        if (!file.write(generation(++number))) {
            return EXIT_FAILURE;
        }
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
    return EXIT_SUCCESS;
}
