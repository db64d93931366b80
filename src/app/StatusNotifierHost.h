// Whether the desktop shows icons that programs announce on the session bus.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <functional>
#include <optional>

namespace klova {

/// Asks without ever waiting. Without a session bus, or once it has gone, there is no host.
class StatusNotifierHost final : public QObject {
    Q_OBJECT

public:
    StatusNotifierHost();

    /// Absent until the bus has answered for the first time.
    std::optional<bool> present() const { return present_; }

    /// `changed` is called whenever `present` has another value.
    void setChanged(std::function<void()> changed) { changed_ = std::move(changed); }

private slots:
    void ask();
    void lose() { set(false); }

private:
    void listen();
    void set(bool present);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    std::optional<bool> present_;
    std::function<void()> changed_;
};

} // namespace klova
