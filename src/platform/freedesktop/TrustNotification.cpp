#include "platform/freedesktop/TrustNotification.h"

#include "platform/Diagnostics.h"
#include "platform/freedesktop/Notification.h"

#include <QCoreApplication>
#include <QStringList>

namespace klova {
namespace {

QString translated(const char* text) { return QCoreApplication::translate("TrustPrompt", text); }

QString sentence(const LackOfTrust& lack) {
    switch (lack.reason) {
    case LackOfTrust::Reason::untrustedConnection:
        return translated(QT_TRANSLATE_NOOP(
            "TrustPrompt", "The display does not trust this program, which was perhaps started "
                           "from another computer or a closed environment. Start Klova directly "
                           "in your session."));
    case LackOfTrust::Reason::waylandSession:
        return translated(QT_TRANSLATE_NOOP(
            "TrustPrompt", "This is a Wayland session, where no program may move the windows of "
                           "others. Choose an X11 (Xorg) session when you log in."));
    case LackOfTrust::Reason::missingFeatures:
        break;
    }
    QStringList missing;
    for (const std::string& name : lack.missing)
        missing << QString::fromStdString(name);
    return translated(QT_TRANSLATE_NOOP("TrustPrompt", "The display lacks what Klova needs: %1."))
        .arg(missing.join(QStringLiteral(", ")));
}

} // namespace

void TrustNotification::show(const LackOfTrust& lack) {
    const QString title = translated(
        QT_TRANSLATE_NOOP("TrustPrompt", "Klova may not arrange the windows of other programs"));
    const QString text = sentence(lack);
    errorLine((title + ": " + text).toStdString());
    notify(title, text, Urgency::critical);
}

} // namespace klova
