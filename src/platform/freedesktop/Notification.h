// Notifications on the desktop, over the org.freedesktop.Notifications service.
#pragma once

#include <QString>
#include <cstdint>

namespace klova {

/// A critical one stays until the person has dismissed it.
enum class Urgency : std::uint8_t { low, normal, critical };

/// Hands plain text, without markup, to whoever shows notifications in this session. Waits for no
/// answer and does nothing where there is nobody. Needs a running QCoreApplication.
void notify(const QString& title, const QString& text, Urgency urgency);

} // namespace klova
