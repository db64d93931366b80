#include "platform/x11/Minimizing.h"

#include "platform/x11/Activation.h"
#include "platform/x11/Properties.h"
#include "platform/x11/WindowManager.h"

#include <array>

namespace klova::x11 {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 30ms;
constexpr int kSteps = 12;

} // namespace

Minimizing::Minimizing(Connection& connection, WindowManager& manager, xcb_window_t window)
    : connection_(connection), manager_(manager), window_(window) {}

void Minimizing::minimize(Clock::time_point now) {
    wanted_ = true;
    focusWanted_ = false;
    due_ = now + 4 * kPatience;
    connection_.sendToWindowManager(window_, connection_.atoms().WM_CHANGE_STATE,
                                    std::array{WindowSnapshot::kIconic, 0U, 0U, 0U, 0U});
    connection_.flush();
}

void Minimizing::restore(const WindowSnapshot& current, xcb_timestamp_t time,
                         Clock::time_point now) {
    if (wanted_ == false)
        return;
    if (!wanted_ && (!current.minimized() || current.wmState == 0))
        return;
    wanted_ = false;
    focusWanted_ = false;
    time_ = time;
    step_ = 0;
    nextStep(now);
}

void Minimizing::focus(xcb_timestamp_t time) {
    focusWanted_ = wanted_ == false;
    activate(connection_, manager_, window_, time);
}

void Minimizing::nextStep(Clock::time_point now) {
    if (step_ == kSteps) {
        wanted_.reset();
        return;
    }
    switch (step_++ % 3) {
    case 0:
        manager_.removeState(window_, connection_.atoms()._NET_WM_STATE_HIDDEN);
        break;
    case 1:
        xcb_map_window(connection_.get(), window_);
        break;
    default:
        activate(connection_, manager_, window_, time_);
    }
    due_ = now + kPatience;
    connection_.flush();
}

/// A window that is gone or withdrawn has no more to reach.
bool Minimizing::reached() {
    const auto current = readSnapshot(connection_, manager_, window_);
    if (!current || current->wmState == 0)
        return true;
    return current->minimized() == *wanted_ && (!focusWanted_ || isActive());
}

bool Minimizing::isActive() {
    const auto active =
        takeItems(connection_.get(), askProperty(connection_.get(), connection_.root(),
                                                 connection_.atoms()._NET_ACTIVE_WINDOW));
    return active.empty() || active[0] == window_;
}

/// Focus is looked at later: the manager may still be about to give it to the window that stood
/// in for this one.
void Minimizing::onStateChanged(Clock::time_point) {
    if (wanted_ && !focusWanted_ && reached())
        wanted_.reset();
}

Deadline Minimizing::deadline() const { return wanted_ ? std::optional(due_) : std::nullopt; }

void Minimizing::onDeadline(Clock::time_point now) {
    if (!wanted_ || now < due_)
        return;
    if (*wanted_ || reached())
        wanted_.reset();
    else
        nextStep(now);
}

} // namespace klova::x11
