#include "app/DesktopPump.h"

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <chrono>
#include <utility>

namespace klova {

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
}

void DesktopPump::handled(bool there) {
    if (there)
        setTimer(source_.deadline());
    else
        gone_();
}

void DesktopPump::setTimer(std::optional<EventSource::Clock::time_point> deadline) {
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
