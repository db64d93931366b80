// What tests of the panels share: Qt without a display, and a shell that notes what it is asked.
#pragma once

#include "core/SimulatedDesktop.h"
#include "ui/PanelDelegate.h"

#include <QApplication>
#include <QTranslator>
#include <memory>

namespace klova::test {

/// The program's one application object, gone before the objects that Qt keeps to the end.
class OffscreenQt final : public testing::Environment {
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QApplication>(count_, arguments_);
    }
    void TearDown() override { application_.reset(); }

    int count_ = 1;
    char name_[9] = "ui_tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};
inline const testing::Environment* const offscreenQt =
    testing::AddGlobalTestEnvironment(new OffscreenQt); // which takes it

inline QApplication& application() { return *qApp; }

/// A language whose texts are longer than the program's own by two fifths, while it lives.
struct LongLanguage final : QTranslator {
    LongLanguage() { QCoreApplication::installTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override {
        const QString source = QString::fromUtf8(text);
        return source + " " + source.left(source.size() * 2 / 5).remove('*').remove('%');
    }
};

/// Its notes stand between those of the simulated desktop.
struct NotingShell final : PanelDelegate {
    explicit NotingShell(SimulatedDesktop& desktop) : sim(desktop) {}
    void quitApplication() override {}
    void updateActivationKeyLabel() override { note("activation label"); }
    void updateShortCutLabels() override { note("shortcut labels"); }
    void toggleShowMenuItems(bool enabled) override { note(enabled ? "menu on" : "menu off"); }
    void openPreferences() override {}
    void closeWelcome() override { note("tour closed"); }
    void closeAbout() override {}

    void note(std::string entry) {
        for (std::string& earlier : sim.takeLog())
            if (!earlier.starts_with("load "))
                log.push_back(std::move(earlier));
        log.push_back(std::move(entry));
    }

    SimulatedDesktop& sim;
    Log log;
};

} // namespace klova::test
