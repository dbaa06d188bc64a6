#include "settings/ShowKeeper.h"

#include "settings/RecoveryFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

class tst_ShowKeeper : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void withoutAChangeNothingIsWritten();
    void aChangeIsWritten();
    void changesOfOnePauseAreWrittenOnce();
    void whatCouldNotBeWrittenIsTriedAgain();
    void afterTheEndNothingIsWritten();
    void whatIsBeingWrittenIsWholeAtTheEnd();

private:
    QString path() const { return folder_->filePath("folder/Faderhall.recovery.plist"); }
    ShowSnapshot snapshot() {
        ++snapshots_;
        return {.settings = {}, .configName = "Stage", .currCue = currCue_, .levels = {}};
    }
    // What stands in the file; nothing without one.
    QString keptCue() const {
        const auto taken = RecoveryFile(path(), folder_->filePath("none")).takeUp();
        return taken ? taken->currCue.value_or("no cue") : QString();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::optional<QString> currCue_;
    int snapshots_ = 0;
};

void tst_ShowKeeper::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    currCue_.reset();
    snapshots_ = 0;
}

void tst_ShowKeeper::withoutAChangeNothingIsWritten() {
    RecoveryFile file(path(), folder_->filePath("none"));
    ShowKeeper keeper(file, [this] { return snapshot(); });
    keeper.start(1ms);
    QTest::qWait(50);
    QCOMPARE(snapshots_, 0);
    QVERIFY(!QFile::exists(path()));
}

void tst_ShowKeeper::aChangeIsWritten() {
    RecoveryFile file(path(), folder_->filePath("none"));
    ShowKeeper keeper(file, [this] { return snapshot(); });
    keeper.start(1ms);
    for (const QString cue : {"1", "2", "3"}) {
        currCue_ = cue;
        keeper.showChanged();
        QTRY_COMPARE(keptCue(), cue);
    }
    QCOMPARE(snapshots_, 3);
}

void tst_ShowKeeper::changesOfOnePauseAreWrittenOnce() {
    RecoveryFile file(path(), folder_->filePath("none"));
    ShowKeeper keeper(file, [this] { return snapshot(); });
    keeper.start(1ms);
    for (int change = 0; change < 1000; ++change) {
        keeper.showChanged();
    }
    QTRY_COMPARE(keptCue(), QString("no cue"));
    QTest::qWait(50);
    QCOMPARE(snapshots_, 1);
}

void tst_ShowKeeper::whatCouldNotBeWrittenIsTriedAgain() {
    QFile obstacle(folder_->filePath("folder"));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    RecoveryFile file(path(), folder_->filePath("none"));
    ShowKeeper keeper(file, [this] { return snapshot(); });
    keeper.start(1ms);
    keeper.showChanged();
    QTRY_VERIFY(snapshots_ >= 2);
    QVERIFY(obstacle.remove());
    QTRY_COMPARE(keptCue(), QString("no cue"));
}

void tst_ShowKeeper::afterTheEndNothingIsWritten() {
    RecoveryFile file(path(), folder_->filePath("none"));
    ShowKeeper keeper(file, [this] { return snapshot(); });
    keeper.start(1ms);
    keeper.stop();
    keeper.showChanged();
    QTest::qWait(50);
    QCOMPARE(snapshots_, 0);
}

void tst_ShowKeeper::whatIsBeingWrittenIsWholeAtTheEnd() {
    RecoveryFile file(path(), folder_->filePath("none"));
    currCue_ = "7";
    {
        ShowKeeper keeper(file, [this] { return snapshot(); });
        keeper.start(1ms);
        keeper.showChanged();
        QTRY_COMPARE(snapshots_, 1);
    }
    QCOMPARE(keptCue(), QString("7"));
}

QTEST_GUILESS_MAIN(tst_ShowKeeper)
#include "tst_ShowKeeper.moc"
