#include "platform/x11/Placement.h"

#include "platform/x11/WindowManager.h"
#include "platform/x11/X11Screens.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace klova::x11 {
namespace {

using namespace std::chrono_literals;

constexpr auto kPace = 16ms;      // a newer position waits this long for an answer to the last
constexpr auto kPatience = 50ms;  // until the first look where no answer comes, then twice as long
constexpr auto kSettling = 12ms;  // an answer that differs may be followed by another
constexpr auto kWatching = 400ms; // decorations that follow a state come late
constexpr int kCorrections = 4;
constexpr int kLooks = 4;

std::uint32_t word(int value) { return static_cast<std::uint32_t>(value); }

} // namespace

Placement::Placement(Connection& connection, WindowManager& manager, X11Screens& screens,
                     xcb_window_t window)
    : connection_(connection), manager_(manager), screens_(screens), window_(window) {}

void Placement::writePosition(Point position, const WindowSnapshot& now) {
    note(now);
    wanted_.origin = position;
}

void Placement::writeSize(Size size, const WindowSnapshot& now) {
    note(now);
    wanted_.size = size;
    sizeUnsent_ = true;
}

void Placement::note(const WindowSnapshot& now) {
    if (outdated()) {
        sent_.reset();
        unsent_ = sizeUnsent_ = false;
    }
    if (!written())
        wanted_ = frameOf(now.frame());
    known_ = now;
    unsent_ = true;
}

/// A manager that is gone gives no answer, and has taken its decoration along.
bool Placement::outdated() const { return sent_ && sent_->manager != manager_.checkWindow(); }

std::optional<Frame> Placement::written() const {
    if (outdated())
        return std::nullopt;
    if (unsent_ || outstanding() || (sent_ && sent_->granted))
        return wanted_;
    return std::nullopt;
}

void Placement::flush(Clock::time_point now) {
    if (unsent_ && !(outstanding() && now < sent_->at + kPace))
        send(now);
}

void Placement::send(Clock::time_point now) {
    unsent_ = false;
    const bool leavingFullscreen = outstanding() && sent_->statesTaken;
    if (known_.fullscreen && !sizeUnsent_ && !leavingFullscreen)
        return; // a drag leaves a fullscreen window where it is
    if (!sent_ && !sizeUnsent_ && !known_.maximized && boxOf(wanted_) == known_.frame())
        return; // no manager answers to a move that is none, and the next one would wait for it
    const bool exact = sizeUnsent_ || (outstanding() && sent_->exact);
    sizeUnsent_ = false;
    Request next;
    next.exact = exact;
    next.statesTaken = leavingFullscreen;
    next.corrections = kCorrections;
    sent_ = next;
    request(boxOf(wanted_), now);
}

void Placement::request(const Box& frame, Clock::time_point now) {
    sent_->frame = frame;
    sent_->manager = manager_.checkWindow();
    sent_->extents = known_.extents();
    sent_->client = shrunk(frame, sent_->extents);
    sent_->at = now;
    sent_->answered = false;
    sent_->granted = false;
    sent_->heard = false;
    sent_->looks = 0;
    sent_->settled.reset();
    takeStatesOff();
    place(frame);
    connection_.flush();
}

void Placement::takeStatesOff() {
    const auto& atoms = connection_.atoms();
    if (known_.fullscreen)
        manager_.removeState(window_, atoms._NET_WM_STATE_FULLSCREEN);
    if (known_.maximized)
        manager_.removeState(window_, atoms._NET_WM_STATE_MAXIMIZED_HORZ,
                             atoms._NET_WM_STATE_MAXIMIZED_VERT);
    sent_->statesTaken |= !known_.movable();
}

/// Position and size always go together: there are managers that let a window grow by its title
/// bar when only moved. North-west gravity is the one that all understand alike.
void Placement::place(const Box& frame) {
    const Box& client = sent_->client;
    const bool managed = manager_.present();
    Box corner = frame;
    if (managed && known_.decorationPublished)
        corner = grown(frame, known_.shadow);
    else if (managed) // by what is seen, such a manager takes the client's own corner
        corner = grown(client, {known_.border, 0, known_.border, 0});
    const int width = std::max(1, client.width);
    const int height = std::max(1, client.height);
    if (manager_.movesWindows()) {
        constexpr std::uint32_t northWest = 1;
        constexpr std::uint32_t allFour = 0xF00;
        constexpr std::uint32_t fromPager = 2 << 12;
        connection_.sendToWindowManager(window_, connection_.atoms()._NET_MOVERESIZE_WINDOW,
                                        std::array{northWest | allFour | fromPager, word(corner.x),
                                                   word(corner.y), word(width), word(height)});
        return;
    }
    const std::array values{word(corner.x), word(corner.y), word(width), word(height)};
    xcb_configure_window(connection_.get(), window_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

/// Real notifications of a managed window count from its frame; only those that the manager makes
/// up are in root coordinates.
bool Placement::confirms(const xcb_configure_notify_event_t& event) const {
    const Box& client = sent_->client;
    const bool inRoot = (event.response_type & 0x80) != 0 || !manager_.present();
    return inRoot && event.x + event.border_width == client.x &&
           event.y + event.border_width == client.y && event.width == client.width &&
           event.height == client.height;
}

std::optional<Box> Placement::grantedBy(const xcb_configure_notify_event_t& event) const {
    return sent_ && confirms(event) ? std::optional(sent_->client) : std::nullopt;
}

void Placement::onConfigure(const xcb_configure_notify_event_t& event, Clock::time_point now) {
    if (!sent_)
        return;
    sent_->heard = true;
    if (sent_->answered) {
        if (event.width != sent_->client.width || event.height != sent_->client.height)
            sent_->settled = now + kSettling;
        return;
    }
    const bool confirmed = confirms(event);
    if (unsent_ && (confirmed || !sent_->exact)) {
        send(now);
        return;
    }
    // A correction that is confirmed may rest on a size that was on its way out.
    sent_->granted = confirmed && !sent_->statesTaken && sent_->frame == boxOf(wanted_);
    sent_->settled = now + kSettling;
}

void Placement::onDecorationChanged(Clock::time_point now) {
    if (sent_)
        sent_->settled = now + kSettling;
}

Deadline Placement::deadline() const {
    if (unsent_)
        return outstanding() ? sent_->at + kPace : Clock::time_point::min();
    if (!sent_)
        return std::nullopt;
    if (sent_->settled)
        return sent_->settled;
    return sent_->at + (sent_->answered ? kWatching : kPatience * (1 << sent_->looks));
}

void Placement::onDeadline(Clock::time_point now) {
    const auto due = deadline();
    if (!due || now < *due)
        return;
    if (unsent_)
        send(now);
    else if (sent_->answered && !sent_->settled)
        sent_.reset();
    else
        judge(now);
}

void Placement::judge(Clock::time_point now) {
    const bool matters = sent_->exact || sent_->statesTaken;
    const auto truth = matters ? readSnapshot(connection_, manager_, window_) : std::nullopt;
    if (!truth) {
        sent_.reset();
        return;
    }
    known_ = *truth;
    if (isAnswer(truth->frame()))
        putRight(truth->frame(), now);
    else if (sent_->looks == kLooks)
        conclude(now);
    else
        lookAgain(now);
}

/// A manager is silent where it has nothing to change: about a window that takes neither the size
/// nor, twice, the place. Or it is late, and to ask it again would only make for one more answer.
bool Placement::isAnswer(const Box& result) const {
    if (sent_->heard || result == sent_->frame)
        return true;
    const bool there = result.x == sent_->frame.x && result.y == sent_->frame.y;
    return sent_->looks > 0 && known_.movable() && (there || result == sent_->refusal);
}

void Placement::lookAgain(Clock::time_point now) {
    sent_->settled.reset();
    if (now >= *deadline())
        ++sent_->looks;
}

/// Compares the answer with what was wanted, and asks again where asking can help.
void Placement::putRight(const Box& result, Clock::time_point now) {
    // What was asked for with another decoration in mind could not come out, and refuses nothing.
    const bool assumed = known_.extents() == sent_->extents;
    const bool pushed = assumed && insistsOn(result);
    if (pushed)
        sent_->room = intersection(boxOf(wanted_), result);
    const Box goal = assumed && !pushed ? goalFor(result) : target();
    const bool placed = assumed && result == goal && known_.movable();
    if (placed || sent_->corrections == 0) {
        conclude(now);
        return;
    }
    --sent_->corrections;
    if (assumed && result != sent_->frame)
        sent_->refusal = result;
    request(goal, now);
}

/// The answer stands. Decorations that come back with a state's end are still waited for.
void Placement::conclude(Clock::time_point now) {
    if (!sent_->statesTaken || now >= sent_->at + kWatching) {
        sent_.reset();
        return;
    }
    sent_->answered = true;
    sent_->settled.reset();
}

Box Placement::target() const { return sent_->room.value_or(boxOf(wanted_)); }

/// A size that two answers agree on is the one to ask for: managers push what would reach beyond
/// the monitor back onto it, and measure that by the size asked for.
Box Placement::goalFor(const Box& result) const {
    const Point corner = anchored(result);
    const bool agreed =
        result.width == sent_->refusal.width && result.height == sent_->refusal.height;
    const Box size = agreed ? result : target();
    return {static_cast<int>(corner.x), static_cast<int>(corner.y), size.width, size.height};
}

/// Managers that keep windows off a panel push one of the size asked for away from it, half of it
/// at most, and so beyond the other end of its part of the screen.
bool Placement::insistsOn(const Box& result) const {
    const Box& asked = sent_->frame;
    return !sent_->room && result == sent_->refusal && result.width == asked.width &&
           result.height == asked.height && result != asked &&
           2 * std::abs(result.x - asked.x) <= asked.width &&
           2 * std::abs(result.y - asked.y) <= asked.height;
}

/// Where the window belongs, given the size that it took: a wanted frame that ends at its
/// monitor's right or bottom edge without beginning at the opposite one keeps that edge.
Point Placement::anchored(const Box& result) const {
    const Box wanted = boxOf(wanted_);
    const Box goal = target();
    Point corner{double(goal.x), double(goal.y)};
    if (result.width == goal.width && result.height == goal.height)
        return corner;
    for (const auto& [monitor, shift] : screens_.monitors()) {
        const bool overlaps = wanted.x < monitor.right() && wanted.right() > monitor.x &&
                              wanted.y < monitor.bottom() && wanted.bottom() > monitor.y;
        if (!overlaps)
            continue;
        if (wanted.right() == monitor.right() && wanted.x != monitor.x)
            corner.x = goal.right() - result.width;
        if (wanted.bottom() == monitor.bottom() && wanted.y != monitor.y)
            corner.y = goal.bottom() - result.height;
    }
    return corner;
}

} // namespace klova::x11
