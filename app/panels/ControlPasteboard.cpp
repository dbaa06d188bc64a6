#include "panels/ControlPasteboard.h"

#include "rig/ControlArchive.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

namespace {

constexpr auto stringType = "text/plain";

} // namespace

void copyLevel(int value) {
    auto archive = std::make_unique<QMimeData>();
    archive->setData(stringType, archiveLevel(value));
    QGuiApplication::clipboard()->setMimeData(archive.release());
}

std::optional<int> pastedLevel() {
    const QMimeData* const pasteboard = QGuiApplication::clipboard()->mimeData();
    return pasteboard ? unarchiveLevel(pasteboard->data(stringType)) : std::nullopt;
}
