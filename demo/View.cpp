#include "View.h"

#include "desktop/DisplayKey.h"
#include "desktop/Files.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace klova::demo {
namespace {

std::string asHex(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte));
        text += digits.data();
    }
    return text;
}

/// Listens on a free port of 127.0.0.1. Made here and inherited by who serves the page, so that
/// nobody else can take the port in between.
class Listener {
public:
    Listener() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* address = reinterpret_cast<sockaddr*>(&address_);
        socklen_t size = sizeof address_;
        if (::bind(socket_, address, size) != 0 || ::listen(socket_, 16) != 0 ||
            ::getsockname(socket_, address, &size) != 0)
            throw std::system_error(errno, std::generic_category(), "cannot listen on 127.0.0.1");
    }
    ~Listener() { ::close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    int socket() const { return socket_; }
    std::uint16_t port() const { return ntohs(address_.sin_port); }

private:
    int socket_;
    sockaddr_in address_{};
};

void mustRun(rig::Process& process, const char* what) {
    if (!process.running())
        throw std::runtime_error(std::string(what) + " has ended: " + process.output());
}

} // namespace

View::View(std::filesystem::path binary)
    : binary_(std::move(binary)), stage_({.screen = {1440, 900}}),
      caption_(stage_.desktop().server().display()), secret_(asHex(rig::randomBytes())),
      screen_(startScreen()), page_(startPage()), klova_(startKlova()) {
    caption_.show({{"Shift", "Alt"}, "hold both: arrows, drag, double and right click"});
}

std::string View::address() const {
    return "http://127.0.0.1:" + std::to_string(port_) +
           "/vnc.html#autoconnect=1&resize=scale&path=?token=" + secret_;
}

void View::serve() {
    while (!quit_.made()) {
        mustRun(screen_, "The view of the desktop");
        mustRun(page_, "The page");
        if (klova_.waitExit(std::chrono::milliseconds(500)).value_or(0) != 0)
            throw std::runtime_error("Klova has ended: " + klova_.output());
        if (!quit_.made() && !klova_.running())
            klova_ = startKlova();
    }
}

rig::Process View::startScreen() {
    const auto& directory = stage_.desktop().session().directory();
    // Keys go by their places: by their meanings Alt would be another key while Shift is held.
    // The memory that it would share with the X server is open to every user of the machine.
    auto screen = stage_.desktop().launch(
        {"X0tigervnc", "-rfbport=-1", "-rfbunixpath", directory / "view", "-SecurityTypes", "None",
         "-RawKeyboard", "-UseSHM=0", "-AlwaysShared", "-desktop", "Klova"});
    rig::awaitFile(screen, directory / "view");
    return screen;
}

rig::Process View::startPage() {
    auto& session = stage_.desktop().session();
    const auto secrets = session.directory() / "secrets";
    const auto target = (session.directory() / "view").string();
    rig::writeFile(secrets, secret_ + ": unix_socket:" + target + "\n");
    const Listener listener;
    port_ = listener.port();
    return {{"websockify", "--inetd", "--web", "/usr/share/novnc", "--token-plugin",
             "ReadOnlyTokenFile", "--token-source", secrets},
            {.environment = session.environment(),
             .output = session.directory() / "page.log",
             .standardInput = listener.socket()}};
}

rig::Process View::startKlova() {
    const auto settings = stage_.desktop().session().preferences();
    // The desktop round the browser often keeps Super for itself, and Ctrl+Alt with the arrows.
    if (!std::filesystem::exists(settings))
        rig::writeFile(settings, R"({"isNotFirstTime": true, "activationKeys": [56, 58],
 "LoadsOnStartup": false, "maximizingEnabled": true, "centeringEnabled": true,
 "deminimizeButton": 8})");
    return stage_.desktop().launch({binary_.string()});
}

} // namespace klova::demo
