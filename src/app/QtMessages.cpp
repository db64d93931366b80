#include "app/QtMessages.h"

#include "platform/FatalError.h"

#include <QString>
#include <QtGlobal>
#include <utility>

namespace klova {
namespace {

std::function<void()> theAtWarning;

void handleMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (type == QtFatalMsg)
        fatalError(text.simplified().toStdString());
    if (type == QtWarningMsg || type == QtCriticalMsg)
        theAtWarning();
}

} // namespace

void handleQtMessages(std::function<void()> atWarning) {
    theAtWarning = std::move(atWarning);
    qInstallMessageHandler(handleMessage);
}

} // namespace klova
