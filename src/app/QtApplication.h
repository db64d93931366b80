// The application's run loop, its end and its alerts, by Qt.
#pragma once

#include "platform/Application.h"

#include <QApplication>

namespace klova {

class QtApplication final : public Application {
public:
    /// Opens Qt's own connection to the desktop, `platform` being Qt's name for its kind. Where Qt
    /// cannot start the process ends with one sentence and status 70.
    explicit QtApplication(const char* platform);

    void activateIgnoringOtherApps() override;
    int runModalAlert(std::string_view message, std::string_view informative) override;
    void terminate() override;
    void run() override;

    bool running() const { return running_; }

private:
    QApplication application_;
    bool running_ = false;
};

} // namespace klova
