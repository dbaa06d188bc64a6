#include "process/ToolkitMessages.h"

#include "print/BackgroundPrinter.h"
#include "print/Print.h"
#include "support/StandardOutput.h"

#include <QDebug>
#include <QTest>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

class tst_ToolkitMessages : public QObject {
    Q_OBJECT

private slots:
    void aMessageStandsInLineWithAllElse();
    void theLastWordsOfAProgramThatIsAbortedAreWritten();
};

void tst_ToolkitMessages::aMessageStandsInLineWithAllElse() {
    const QByteArray said = standardErrorOf([] {
        const BackgroundPrinter printer;
        const ToolkitMessages messages;
        printError("before");
        qWarning("from the toolkit");
        printError("after");
    });
    QCOMPARE(said, QByteArray("before\nfrom the toolkit\nafter\n"));
}

void tst_ToolkitMessages::theLastWordsOfAProgramThatIsAbortedAreWritten() {
    int status = 0;
    const QByteArray said = standardErrorOf([&status] {
        const pid_t child = fork();
        if (child == 0) {
            std::signal(SIGABRT, SIG_DFL);
            const BackgroundPrinter printer;
            const ToolkitMessages messages;
            qFatal("the end");
        }
        waitpid(child, &status, 0);
    });
    QCOMPARE(said, QByteArray("the end\n"));
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
}

QTEST_APPLESS_MAIN(tst_ToolkitMessages)
#include "tst_ToolkitMessages.moc"
