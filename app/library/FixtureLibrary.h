#pragma once

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

class QThread;

/// One mode of a fixture that the library folder holds.
struct LibraryMode {
    QString maker;
    QString model;
    QString mode;
    QString file;
    int channels = 0; ///< slots
};

/// The modes of all fixtures under a folder, found by a thread of its own. Files that would be refused are
/// left out.
class FixtureLibrary : public QObject {
    Q_OBJECT

public:
    explicit FixtureLibrary(QString folder);
    /// Ends the thread, finished or not.
    ~FixtureLibrary() override;

    /// Where the system's packages put fixture definitions.
    static QString installedFolder();

    /// Begins to look through the folder, once; does nothing without the folder.
    void startIndexing();

    /// Sorted by maker, model, mode; empty until indexed() was emitted.
    const std::vector<LibraryMode>& modes() const { return modes_; }

signals:
    void indexed();

private:
    void index();

    QString folder_;
    std::vector<LibraryMode> modes_;
    std::unique_ptr<QThread> thread_;
    std::atomic<bool> ends_ = false;
};
