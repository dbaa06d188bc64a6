#include "process/DisplayCheck.h"

#include "print/Print.h"

#include <QtGlobal>

#include <cstdlib>

namespace {

QtMessageHandler gHandlerBefore = nullptr;

void endOnFatal(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        printError("Faderhall finds no display to open its windows on. QT_QPA_PLATFORM=offscreen in the "
                   "environment runs it without windows.");
        finishPrinting();
        std::_Exit(EXIT_FAILURE);
    }
    gHandlerBefore(type, context, message);
}

} // namespace

DisplayCheck::DisplayCheck() {
    gHandlerBefore = qInstallMessageHandler(endOnFatal);
}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(gHandlerBefore);
}
