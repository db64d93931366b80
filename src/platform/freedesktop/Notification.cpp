#include "platform/freedesktop/Notification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace klova {

void notify(const QString& title, const QString& text, Urgency urgency) {
    constexpr std::uint32_t noneToReplace = 0;
    constexpr int asLongAsTheDesktopLikes = -1;
    const QVariantMap hints{
        {"urgency", QVariant::fromValue(static_cast<std::uint8_t>(urgency))},
        {"desktop-entry", "klova"},
    };
    auto message = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                  "/org/freedesktop/Notifications",
                                                  "org.freedesktop.Notifications", "Notify");
    message << "Klova" << noneToReplace << "dialog-warning" << title << text.toHtmlEscaped()
            << QStringList() << hints << asLongAsTheDesktopLikes;
    QDBusConnection::sessionBus().send(message);
}

} // namespace klova
