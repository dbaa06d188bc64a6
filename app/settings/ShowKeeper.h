#pragma once

#include "plist/BackgroundWrite.h"
#include "settings/ShowSnapshot.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

class RecoveryFile;

/// Keeps the running show in its recovery file: looks once in a pause whether it changed. The file is written
/// by a thread of its own from a snapshot taken here, so that neither ticks nor keys wait for a disk.
class ShowKeeper : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultPause{2000};

    /// `file` has to outlive the keeper; `presentShow` is called on this thread only.
    ShowKeeper(RecoveryFile& file, std::function<ShowSnapshot()> presentShow);

    void start(std::chrono::milliseconds pause = defaultPause);
    /// Something that is worth keeping may have changed. Costs next to nothing.
    void showChanged() { isChanged_ = true; }
    /// Ends the keeping. Whatever is being written is on the disk afterwards.
    void stop();

private:
    void keep();
    void takeResult();

    RecoveryFile& file_;
    std::function<ShowSnapshot()> presentShow_;
    QTimer timer_;
    bool isChanged_ = false;
    BackgroundWrite writing_;
};
