// Who has to know when the desktop's scale changes.
#pragma once

#include <QObject>
#include <functional>

namespace klova {

/// Calls `changed` from the event loop after each change of a screen's scale, those of screens
/// that are connected later included, for as long as `context` lives.
void watchScale(QObject& context, const std::function<void()>& changed);

} // namespace klova
