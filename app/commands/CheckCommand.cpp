#include "commands/CheckCommand.h"

#include "check/FileCheck.h"
#include "check/RigListing.h"
#include "commands/CommandLine.h"
#include "console/Resources.h"
#include "settings/SettingsFile.h"
#include "settings/UserDefaults.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdio>

namespace {

constexpr int nothingWrong = 0;
constexpr int problemsFound = 1;
constexpr int couldNotLook = 2;

void print(const QStringList& lines) {
    for (const QString& line : lines) {
        std::printf("%s\n", qUtf8Printable(line));
    }
}

int ended(const QStringList& lines, const QStringList& notLookedAt, int status) {
    print(lines);
    for (const QString& line : notLookedAt) {
        std::fprintf(stderr, "faderhall: %s\n", qUtf8Printable(line));
    }
    return notLookedAt.isEmpty() ? status : couldNotLook;
}

} // namespace

int checkCommand(const CommandLine& commandLine, int argc, char** argv) {
    const QCoreApplication application(argc, argv); // knows the program's folder
    std::setlocale(LC_NUMERIC, "C");                // it sets the user's, and stored numbers have none
    const RigPaths paths{.tables =
                             resourceFolder(commandLine.resources, QCoreApplication::applicationDirPath()),
                         .settings = SettingsFile::defaultPath(),
                         .defaults = UserDefaults::defaultPath()};
    if (commandLine.task == CommandLine::List) {
        const auto [lines, notLookedAt] = listFiles(paths);
        return ended(lines, notLookedAt, nothingWrong);
    }
    const auto [problems, notLookedAt] = checkFiles(paths);
    return ended(problems, notLookedAt, problems.isEmpty() ? nothingWrong : problemsFound);
}
