#include "Trial.h"

#include "Comparison.h"
#include "Devices.h"
#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

namespace klova::stress {
namespace {

using namespace std::chrono_literals;

/// Closer together, window managers themselves lose clicks.
constexpr std::chrono::milliseconds kPace{2};

/// How long a new keyboard map or manager goes on making other programs place their grabs.
constexpr std::chrono::milliseconds kUnrest{600};

/// How long Klova may take to see that a window is where it belongs.
constexpr std::chrono::milliseconds kCorrections{80};

std::filesystem::path settingsFile(rig::VirtualDesktop& desktop) {
    return desktop.session().config() / "klova" / "preferences.json";
}

} // namespace

Trial::Trial(const std::string& manager, std::filesystem::path klova)
    : desktop_({.windowManager = manager}), barrier_(desktop_.server().display()),
      binary_(std::move(klova)), listener_(desktop_.server().display()) {
    rig::require(desktop_.display(), "management of the listener",
                 [this] { return rig::isSettled(desktop_.display(), listener_.window()); });
    start();
    settings_ = rig::readFile(settingsFile(desktop_));
}

void Trial::start() {
    setLayout(0);
    player_.reset();
    klova_.reset();
    klova_.emplace(desktop_, binary_);
    klova_->hands().setSpacing(kPace);
    player_.emplace(desktop_, klova_->hands(), listener_);
}

std::string Trial::restart() {
    auto& hands = klova_->hands();
    klova_->holdActivationKeys();
    hands.tap(XKB_KEY_t);
    klova_->releaseActivationKeys();
    const auto status = klova_->process().waitExit(rig::kDeadline);
    if (status != 0)
        return "T does not quit: " + (status ? std::to_string(*status) : "still there") + '\n' +
               klova_->process().output();
    if (auto fault = aftermath(); !fault.empty())
        return "after the end: " + fault;
    start();
    return "";
}

Usage Trial::usage() {
    setLayout(0);
    return usageOf(desktop_.display(), klova_->process().id());
}

std::string Trial::play(Stream stream) {
    prepare(stream);
    std::string fault = playSteps(stream);
    if (!fault.empty())
        return fault + aftermath();
    fault = difference(stream, hearOut());
    fault += aftermath();
    if (fault.empty() && !klova_->process().running())
        fault = "Klova has ended:\n" + klova_->process().output();
    return fault.empty() ? snapFault() : fault;
}

void Trial::prepare(const Stream& stream) {
    setLayout(stream.layout);
    listener_.showPad(stream.temper.pad);
    focusListener();
    klova_->hands().movePointer(720, 450);
    klova_->hands().roundTrip();
    listener_.take();
}

void Trial::setLayout(int layout) {
    if (layout == layout_)
        return;
    layout_ = layout;
    player_->changeLayout(layout);
    std::this_thread::sleep_for(kUnrest);
}

void Trial::focusListener() {
    auto& display = desktop_.display();
    rig::require(display, "focus of the listener", [&] {
        return rig::activate(display, listener_.window()) && barrier_.pass() &&
               rig::activeWindow(display) == listener_.window();
    });
    // What Klova has just moved it moves back for a moment, where somebody else moves it too.
    const rig::Rect wanted{300, 150, 840, 560};
    std::this_thread::sleep_for(kCorrections);
    rig::require(display, "listener that stays in its place", [&] {
        if (!rig::place(display, listener_.window(), wanted))
            return false;
        std::this_thread::sleep_for(kCorrections);
        return rig::visibleFrame(display, listener_.window()) == wanted;
    });
    listener_.takeFocus(); // which the manager may have yet to give
}

/// Corrects what is expected of the stream by what could not be known before.
std::string Trial::playSteps(Stream& stream) {
    std::size_t at = 0;
    const auto mayBeLost = [&](Expected& event) {
        if (event.step == at && event.verdict == Verdict::heard)
            event.verdict = Verdict::either;
    };
    try {
        for (; at < stream.steps.size(); ++at) {
            if (player_->play(stream.steps[at]))
                std::ranges::for_each(stream.expected, mayBeLost);
            if (stream.steps[at].act == Act::changeLayout)
                layout_ = stream.steps[at].detail;
        }
    } catch (const std::exception& failure) {
        return "at step " + std::to_string(at) + ": " + failure.what();
    }
    if (stream.temper.upheaval)
        std::this_thread::sleep_for(kUnrest);
    return "";
}

/// Up to a key that everybody may hear, so that nothing is on its way any more.
std::vector<Heard> Trial::hearOut() {
    // Not by asking for grabs, which would take what is still on its way.
    klova_->hands().roundTrip();
    awaitRelease();
    klova_->hands().pressCode(kProbe);
    klova_->hands().releaseCode(kProbe);
    std::vector<Heard> record;
    rig::waitUntil(desktop_.display(), "the key that ends the stream", [&] {
        const auto news = listener_.take();
        record.insert(record.end(), news.begin(), news.end());
        return std::ranges::any_of(record, [](const Heard& heard) {
            return heard.detail == kProbe && heard.type == XCB_KEY_RELEASE;
        });
    });
    std::erase_if(record, [](const Heard& heard) {
        return heard.detail == kProbe && heard.type <= XCB_KEY_RELEASE;
    });
    return record;
}

std::string Trial::aftermath() {
    std::string fault = heldDevices();
    fault += heldGrabs();
    fault += settingsFault();
    return fault;
}

void Trial::awaitRelease() {
    auto& display = desktop_.display();
    rig::waitUntil(
        display, "keys and buttons that are up",
        [&] { return keysDown(display).empty() && (pointerState(display) & kAnyButton) == 0; }, {},
        1s);
}

std::string Trial::heldDevices() {
    auto& display = desktop_.display();
    awaitRelease();
    std::string text;
    for (const int key : keysDown(display))
        text += "key " + std::to_string(key) + " is down\n";
    if (const auto state = pointerState(display) & (kAnyButton | 0xFF); state != 0)
        text += "the pointer's state is " + std::to_string(state) + '\n';
    return text;
}

std::string Trial::heldGrabs() {
    auto& display = desktop_.display();
    const auto isFree = [&](bool (*grabbed)(rig::Display&)) {
        return rig::waitUntil(
            display, "a free device", [&] { return !grabbed(display); }, {}, 2s);
    };
    std::string text;
    if (!isFree(rig::keyboardGrabbed))
        text += "the keyboard stays grabbed\n";
    if (!isFree(rig::pointerGrabbed))
        text += "the pointer stays grabbed\n";
    return text;
}

std::string Trial::settingsFault() {
    const auto now = rig::readFile(settingsFile(desktop_));
    return now == settings_ ? "" : "the settings have become\n" + now;
}

/// Whether a gesture does what it should. Each direction key comes up once first: one that came up
/// unarmed counts as held.
std::string Trial::snapFault() {
    if (layout_ == 2)
        setLayout(0);
    focusListener();
    klova_->holdActivationKeys();
    for (const Key key : directionKeys()) {
        klova_->hands().pressCode(key);
        klova_->hands().releaseCode(key);
    }
    klova_->hands().pressCode(key::left);
    klova_->hands().releaseCode(key::left);
    klova_->releaseActivationKeys();
    const auto fault =
        klova_->awaitPlace(listener_.window(), rig::Place::left, desktop_.server().screen());
    return fault.empty() ? "" : "a snap goes wrong: " + fault;
}

} // namespace klova::stress
