#include "Pictures.h"

#include "Canvas.h"
#include "desktop/Monitors.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <array>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace klova::demo {
namespace {

using namespace std::chrono_literals;

constexpr rig::ScreenSize kPoints{900, 720};
constexpr int kMargin = 24; // points round what a picture is of

rig::ScreenSize scaled(const rig::ScreenSize& size, double scale) {
    return {static_cast<int>(size.width * scale), static_cast<int>(size.height * scale)};
}

/// What desktops set for people who want everything larger.
void setScale(rig::Display& display, double scale) {
    display.setText(display.root(), "RESOURCE_MANAGER", "STRING",
                    "Xft.dpi:\t" + std::to_string(std::lround(96 * scale)) + "\n");
    display.roundTrip();
}

std::string suffix(const Look& look) {
    return "-" + QString::number(look.scale).toStdString() + "x" +
           (look.composited ? "" : "-plain") + ".png";
}

} // namespace

Pictures::Pictures(const Look& look, std::filesystem::path binary, std::filesystem::path folder)
    : look_(look), binary_(std::move(binary)), folder_(std::move(folder)),
      desktop_({.screen = scaled(kPoints, look.scale)}), hands_(desktop_.server().display()),
      tray_(rig::startCornerTray(desktop_)) {
    setScale(desktop_.display(), look.scale);
    paintBackground(desktop_.display());
    if (!look.composited)
        return;
    compositor_.emplace(desktop_.launch({"xcompmgr"}));
    rig::awaitOwner(desktop_.display(), "_NET_WM_CM_S0");
}

int Pictures::take() {
    const auto screen = desktop_.server().screen();
    hands_.movePointer(screen.width, screen.height); // where it hides nothing
    klova_.emplace(desktop_.launch({binary_}));
    takeTour();
    takeMenu();
    takePreferences();
    takeAbout();
    klova_.reset();
    takeAlert();
    return saved_;
}

void Pictures::takeTour() {
    // When each page shows what it is about.
    constexpr std::array moments{3200ms, 2600ms, 3600ms, 3000ms};
    awaitPanel(*klova_);
    for (std::size_t page = 0; page < moments.size(); ++page) {
        pause(moments.at(page));
        save(rig::clientArea(desktop_.display(), panel_), "tour-" + std::to_string(page + 1));
        hands_.tap(XKB_KEY_Return);
    }
    awaitNoPanel();
}

void Pictures::takeMenu() {
    openMenu();
    const auto menu = rig::unmanagedWindow(desktop_.display(), "klova");
    auto area = rig::clientArea(desktop_.display(), menu.value());
    area.height = desktop_.server().screen().height - area.y; // with the icon
    save(area, "menu");
    hands_.tap(XKB_KEY_Escape);
    rig::require(desktop_.display(), "end of the menu",
                 [&] { return !rig::unmanagedWindow(desktop_.display(), "klova"); });
}

void Pictures::takePreferences() {
    openMenu();
    chooseFromMenu(3);
    awaitPanel(*klova_);
    const auto area = rig::clientArea(desktop_.display(), panel_);
    save(area, "preferences");
    hands_.tap(XKB_KEY_space); // one activation key less
    pause(400ms);
    save(area, "preferences-note");
    hands_.tap(XKB_KEY_Tab);
    hands_.tap(XKB_KEY_space); // which is refused
    pause(400ms);
    save(area, "preferences-normal");
    hands_.tap(XKB_KEY_Escape);
    awaitNoPanel();
}

void Pictures::takeAbout() {
    openMenu();
    chooseFromMenu(2);
    awaitPanel(*klova_);
    save(rig::clientArea(desktop_.display(), panel_), "about");
}

void Pictures::takeAlert() {
    // A display on which no program may arrange the windows of others.
    rig::setMonitors(desktop_.display(), {desktop_.server().screen()}, "XWAYLAND");
    auto klova = desktop_.launch({binary_});
    awaitPanel(klova);
    save(rig::visibleFrame(desktop_.display(), panel_), "alert");
    hands_.tap(XKB_KEY_Return);
    klova.waitExit(rig::kDeadline);
}

void Pictures::openMenu() {
    const auto screen = desktop_.server().screen();
    hands_.movePointer(screen.width - rig::kIconFromRight, screen.height - rig::kIconFromBottom);
    hands_.click(1);
    rig::require(desktop_.display(), "menu",
                 [&] { return rig::unmanagedWindow(desktop_.display(), "klova").has_value(); });
    pause(200ms); // for it to hold the keyboard
}

void Pictures::chooseFromMenu(int fromBottom) {
    for (int i = 0; i < fromBottom; ++i)
        hands_.tap(XKB_KEY_Up);
    hands_.tap(XKB_KEY_Return);
}

void Pictures::awaitPanel(rig::Process& klova) {
    panel_ = rig::awaitWindow(desktop_.display(), klova);
    rig::require(desktop_.display(), "panel in front",
                 [&] { return rig::activeWindow(desktop_.display()) == panel_; });
    pause(200ms);
}

void Pictures::awaitNoPanel() {
    rig::require(desktop_.display(), "end of the panel",
                 [&] { return !rig::windowOfProcess(desktop_.display(), klova_->id()); });
}

void Pictures::pause(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

void Pictures::save(const rig::Rect& area, const std::string& name) {
    quit_.obey();
    const int margin = static_cast<int>(kMargin * look_.scale);
    const auto picture = takeSettledPicture(desktop_.display());
    const QRect part = QRect(area.x, area.y, area.width, area.height)
                           .marginsAdded({margin, margin, margin, margin});
    const auto file = folder_ / (name + suffix(look_));
    if (!picture.copy(part & picture.rect()).save(QString::fromStdString(file.string())))
        throw std::runtime_error("cannot write " + file.string());
    ++saved_;
}

} // namespace klova::demo
