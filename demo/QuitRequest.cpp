#include "QuitRequest.h"

#include <csignal>
#include <stdexcept>

namespace klova::demo {
namespace {

volatile std::sig_atomic_t asked = 0;

void ask(int) { asked = 1; }

} // namespace

QuitRequest::QuitRequest() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, ask);
}

bool QuitRequest::made() const { return asked != 0; }

void QuitRequest::obey() const {
    if (made())
        throw std::runtime_error("stopped");
}

} // namespace klova::demo
