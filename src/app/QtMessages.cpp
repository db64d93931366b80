#include "app/QtMessages.h"

#include "platform/FatalError.h"

#include <QString>
#include <QtGlobal>

namespace klova {

void handleQtMessages() {
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            fatalError(text.simplified().toStdString());
    });
}

} // namespace klova
