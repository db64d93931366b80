#include "app/StatusNotifierHost.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace klova {
namespace {

const QString kService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

StatusNotifierHost::StatusNotifierHost()
    : bus_(QDBusConnection::sessionBus()),
      watcher_(kService, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    if (bus_.isConnected())
        listen();
    else
        present_ = false;
}

void StatusNotifierHost::listen() {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &StatusNotifierHost::ask);
    for (const char* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(kService, kPath, kService, change, this, SLOT(ask()));
    bus_.connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                 "Disconnected", this, SLOT(lose()));
    ask();
}

void StatusNotifierHost::ask() {
    auto question =
        QDBusMessage::createMethodCall(kService, kPath, "org.freedesktop.DBus.Properties", "Get");
    question << kService << "IsStatusNotifierHostRegistered";
    question.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QDBusVariant> reply = *finished;
                finished->deleteLater();
                set(reply.isValid() && reply.value().variant().toBool());
            });
}

void StatusNotifierHost::set(bool present) {
    if (std::exchange(present_, present) != present && changed_)
        changed_();
}

} // namespace klova
