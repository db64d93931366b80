#include "app/DesktopPump.h"

#include "platform/Diagnostics.h"

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <chrono>
#include <glib.h>
#include <span>
#include <utility>

namespace klova {
namespace {

using namespace std::chrono_literals;
using Clock = EventSource::Clock;

/// What an event leads to mostly follows at once: until then the loop's other sources can wait.
constexpr auto kLinger = 1ms;
constexpr auto kLongest = 4ms; // until the last wait begins

DesktopPump* pump = nullptr;

} // namespace

DesktopPump::DesktopPump(EventSource& source, std::function<void()> gone)
    : source_(source), gone_(std::move(gone)),
      notifier_(source.descriptor(), QSocketNotifier::Read) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this] { handled(source_.dispatch()); });
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { handled(source_.dispatch()); });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     &notifier_, [this] { handled(source_.dispatchReceived()); });
    pump = this;
    g_main_context_set_poll_func(nullptr, [](GPollFD* descriptors, guint count, gint timeout) {
        static_assert(sizeof(GPollFD) == sizeof(pollfd)); // which GLib promises
        return wait(reinterpret_cast<pollfd*>(descriptors), count, timeout);
    });
}

DesktopPump::~DesktopPump() {
    g_main_context_set_poll_func(nullptr, nullptr);
    pump = nullptr;
}

/// A key that is held back waits for its answer, so it gets that here and not only after the loop
/// has asked all its sources. Where the loop is not GLib's the notifier does the same a bit later.
int DesktopPump::wait(pollfd* descriptors, unsigned count, int timeout) {
    const std::span all(descriptors, count);
    const auto own = std::ranges::find(all, pump->source_.descriptor(), &pollfd::fd);
    int ready = ::poll(descriptors, count, timeout);
    if (own == all.end() || own->revents != POLLIN)
        return ready;
    const DiagnosticsHold hold;
    const auto end = Clock::now() + (timeout != 0 ? kLongest : 0ms);
    bool there = true;
    while (ready > 0 && own->revents == POLLIN) {
        own->revents = 0;
        --ready;
        there = pump->source_.dispatch();
        if (!there || ready > 0 || !pump->mayLinger(end))
            break;
        ready = ::poll(descriptors, count, kLinger.count());
    }
    pump->handled(there);
    return std::max(ready, 0);
}

bool DesktopPump::mayLinger(Clock::time_point end) const {
    return Clock::now() < std::min(end, source_.deadline().value_or(end));
}

void DesktopPump::handled(bool there) {
    if (there)
        setTimer(source_.deadline());
    else
        gone_();
}

void DesktopPump::setTimer(Deadline deadline) {
    if (deadline == deadline_ && (timer_.isActive() || !deadline))
        return;
    deadline_ = deadline;
    if (!deadline) {
        timer_.stop();
        return;
    }
    const auto now = EventSource::Clock::now(); // which may be ages after what is long due
    timer_.start(std::chrono::ceil<std::chrono::milliseconds>(std::max(*deadline, now) - now));
}

} // namespace klova
