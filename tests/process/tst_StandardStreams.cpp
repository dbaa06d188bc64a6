#include "process/StandardStreams.h"

#include <QTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

// In a process of its own, since it closes its streams: whether the condition held there. A process that was
// killed held nothing.
bool holdsApart(const std::function<bool()>& condition) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(condition() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

} // namespace

class tst_StandardStreams : public QObject {
    Q_OBJECT

private slots:
    void aStreamThatIsClosedTakesWhatIsWritten_data();
    void aStreamThatIsClosedTakesWhatIsWritten();
    void aReaderThatIsGoneFailsTheWrite();
    void aFileThatIsFullFailsTheWrite();
};

void tst_StandardStreams::aStreamThatIsClosedTakesWhatIsWritten_data() {
    QTest::addColumn<int>("stream");

    QTest::newRow("output") << STDOUT_FILENO;
    QTest::newRow("error") << STDERR_FILENO;
}

void tst_StandardStreams::aStreamThatIsClosedTakesWhatIsWritten() {
    QFETCH(const int, stream);

    QVERIFY(holdsApart([stream] {
        close(STDIN_FILENO);
        close(stream);
        openMissingStreams();
        return write(stream, "x", 1) == 1 && dup(stream) > STDERR_FILENO;
    }));
}

void tst_StandardStreams::aReaderThatIsGoneFailsTheWrite() {
    QVERIFY(holdsApart([] {
        outliveFailedWrites();
        std::array<int, 2> ends{};
        return pipe(ends.data()) == 0 && close(ends[0]) == 0 && write(ends[1], "x", 1) < 0 && errno == EPIPE;
    }));
}

void tst_StandardStreams::aFileThatIsFullFailsTheWrite() {
    QVERIFY(holdsApart([] {
        outliveFailedWrites();
        const rlimit nothing{.rlim_cur = 0, .rlim_max = 0};
        std::FILE* const file = std::tmpfile();
        return file && setrlimit(RLIMIT_FSIZE, &nothing) == 0 && write(fileno(file), "x", 1) < 0 &&
               errno == EFBIG;
    }));
}

QTEST_APPLESS_MAIN(tst_StandardStreams)
#include "tst_StandardStreams.moc"
