// An alert: what is wrong, what to do about it, and the one button "OK".
#pragma once

#include <QMessageBox>

namespace klova {

/// Centred on the person's screen and in front of other windows. Enter, Escape, Space and closing
/// it press its button.
class Alert final : public QMessageBox {
public:
    Alert(const QString& message, const QString& informative);
};

} // namespace klova
