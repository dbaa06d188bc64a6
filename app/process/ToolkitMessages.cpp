#include "process/ToolkitMessages.h"

#include "print/Print.h"

#include <QString>
#include <QtGlobal>

namespace {

void printMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (const QString line = qFormatLogMessage(type, context, message); !line.isNull()) {
        printError(qUtf8Printable(line));
    }
    if (type == QtFatalMsg) {
        finishPrinting(); // the toolkit aborts next
    }
}

} // namespace

ToolkitMessages::ToolkitMessages() {
    qInstallMessageHandler(printMessage);
}

ToolkitMessages::~ToolkitMessages() {
    qInstallMessageHandler(nullptr);
}
