#include "app/QuitSignals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

namespace klova {

QuitSignals::QuitSignals() {
    sigset_t quitSignals;
    sigemptyset(&quitSignals);
    sigaddset(&quitSignals, SIGTERM);
    sigaddset(&quitSignals, SIGINT);
    ::pthread_sigmask(SIG_BLOCK, &quitSignals, nullptr);
    descriptor_ = UniqueDescriptor(::signalfd(-1, &quitSignals, SFD_NONBLOCK | SFD_CLOEXEC));
}

void QuitSignals::deliverTo(std::function<void()> quit) {
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated,
                     [descriptor = descriptor_.get(), quit = std::move(quit)] {
                         signalfd_siginfo signal{};
                         if (::read(descriptor, &signal, sizeof signal) == sizeof signal)
                             quit();
                     });
}

} // namespace klova
