#include "library/FixtureLibrary.h"

#include "library/FixtureFile.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <tuple>

namespace {

void append(std::vector<LibraryMode>& modes, const FixtureDefinition& definition, const QString& file) {
    for (const FixtureMode& mode : definition.modes) {
        modes.push_back({.maker = definition.maker,
                         .model = definition.model,
                         .mode = mode.name,
                         .file = file,
                         .channels = static_cast<int>(mode.channels.size())});
    }
}

std::vector<LibraryMode> modesUnder(const QString& folder, const std::atomic<bool>& ends) {
    std::vector<LibraryMode> modes;
    QDirIterator files(folder, {"*.qxf", "*.json"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext() && !ends) {
        const QString file = files.next();
        append(modes, readFixtureFile(file).definition, file);
    }
    std::ranges::sort(modes, {}, [](const LibraryMode& mode) {
        return std::tie(mode.maker, mode.model, mode.mode, mode.file);
    });
    return modes;
}

} // namespace

FixtureLibrary::FixtureLibrary(QString folder) : folder_(std::move(folder)) {}

FixtureLibrary::~FixtureLibrary() {
    ends_ = true;
    if (thread_) {
        thread_->wait();
    }
}

QString FixtureLibrary::installedFolder() {
    return "/usr/share/qlcplus/fixtures";
}

void FixtureLibrary::startIndexing() {
    if (thread_ || !QFileInfo(folder_).isDir()) {
        return;
    }
    thread_.reset(QThread::create([this] { index(); }));
    thread_->start(QThread::LowPriority);
}

// Runs in the thread, and touches nothing here but what it hands over.
void FixtureLibrary::index() {
    std::vector<LibraryMode> modes = modesUnder(folder_, ends_);
    QMetaObject::invokeMethod(
        this,
        [this, found = std::move(modes)]() mutable {
            modes_ = std::move(found);
            emit indexed();
        },
        Qt::QueuedConnection);
}
