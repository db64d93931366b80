#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

const std::string kFirstSettings =
    R"({"isNotFirstTime":true,"activationKeys":[55,59],"maximizingEnabled":true,)"
    R"("centeringEnabled":true,"deminimizeButton":8,"LoadsOnStartup":false})";

std::string withoutBlanks(std::string text) {
    std::erase_if(text, [](char letter) { return letter == ' ' || letter == '\n'; });
    return text;
}

class ProgramTest : public testing::Test {
protected:
    Process start() { return desktop.launch({KLOVA_BINARY}); }

    /// Waits until the tap holds Super+Ctrl, which is the last step of the start.
    bool awaitStart(Process& klova, const std::string& on = "") {
        Display display(on.empty() ? desktop.server().display() : on);
        const auto control = keyboard.keyCode(XKB_KEY_Control_L);
        return waitUntil(
            display, "Klova to start",
            [&] { return keyReserved(display, control, XCB_MOD_MASK_4); },
            [&] { return klova.output(); });
    }

    std::optional<int> quitWithT(Process& klova) {
        keyboard.chord({XKB_KEY_Super_L, XKB_KEY_Control_L}, XKB_KEY_t);
        return klova.waitExit(kDeadline);
    }

    VirtualDesktop desktop;
    Injector keyboard{desktop.server().display()};
    std::filesystem::path settings = desktop.session().preferences();
};

TEST_F(ProgramTest, theFirstRunWritesTheSettingsAndLaterOnesLeaveThemAlone) {
    constexpr std::filesystem::file_time_type longAgo{};
    for (const int signal : {SIGINT, SIGTERM}) {
        Process klova = start();
        ASSERT_TRUE(awaitStart(klova));
        awaitOutput(desktop.display(), klova,
                    signal == SIGINT ? "Opened for First Time!\n" : "[55, 59]\n");
        klova.signal(signal);
        EXPECT_EQ(klova.waitExit(kDeadline), 0);
        EXPECT_EQ(withoutBlanks(readFile(settings)), kFirstSettings);
        if (signal == SIGINT)
            std::filesystem::last_write_time(settings, longAgo);
    }
    EXPECT_EQ(std::filesystem::last_write_time(settings), longAgo);
}

TEST_F(ProgramTest, endsWithOneSentenceWhereItCannotRun) {
    writeFile(settings, kFirstSettings); // the tour of a first run would keep the keyboard
    Process running = start();
    ASSERT_TRUE(awaitStart(running));
    const std::string here = desktop.server().display();
    const std::vector<std::tuple<std::string, std::string, int, std::string>> rows = {
        {here, "", 0, "klova: already running on display " + here + ".\n"},
        {":31999", "", 69, "klova: cannot reach the display \":31999\".\n"},
        {"", "", 69, "klova: no display: DISPLAY is not set.\n"},
        {"", "", 77,
         "klova: Klova may not arrange the windows of other programs: This is a Wayland session, "
         "where no program may move the windows of others. Choose an X11 (Xorg) session when you "
         "log in.\n"},
        {here, "--fast", 64, "klova: takes no arguments but --help or --version.\n"}};
    for (const auto& [display, argument, status, sentence] : rows) {
        desktop.session().setVariable("DISPLAY", display);
        desktop.session().setVariable("WAYLAND_DISPLAY", status == 77 ? "wayland-0" : "");
        Process klova = argument.empty() ? start() : desktop.launch({KLOVA_BINARY, argument});
        EXPECT_EQ(klova.waitExit(kDeadline), status) << sentence;
        EXPECT_EQ(klova.output(), sentence);
    }
    EXPECT_EQ(quitWithT(running), 0) << "the first instance goes on";
}

TEST_F(ProgramTest, saysThatTheServerHasGone) {
    const std::pair<int, bool> rows[] = {{SIGTERM, false}, {SIGKILL, false}, {SIGKILL, true}};
    for (const auto& [signal, armed] : rows) {
        const XServer server;
        desktop.session().setVariable("DISPLAY", server.display());
        Process klova = start();
        ASSERT_TRUE(awaitStart(klova, server.display()));
        Display display(server.display());
        Injector hands(server.display());
        if (armed) {
            hands.press({XKB_KEY_Super_L, XKB_KEY_Control_L});
            ASSERT_TRUE(awaitKeyboardGrab(display));
        }
        server.signal(signal);
        EXPECT_EQ(klova.waitExit(kDeadline), 69);
        EXPECT_TRUE(klova.output().ends_with("\nklova: the X server has gone.\n"))
            << klova.output();
    }
}

TEST_F(ProgramTest, runsWhereNobodyReadsItsOutput) {
    writeFile(settings, kFirstSettings);
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    const std::string block(4096, 'x');
    while (::write(ends[1], block.data(), block.size()) > 0)
        ;
    ::fcntl(ends[1], F_SETFL, 0);
    // A full pipe, no descriptor at all, a full disk, and a pipe that has lost its reader.
    for (const std::string redirection : {"", "<&- >&- 2>&-", ">/dev/full 2>/dev/full", "2>&1"}) {
        if (redirection == "2>&1")
            ::close(ends[0]);
        Process klova({"sh", "-c", "exec \"$0\" " + redirection, KLOVA_BINARY},
                      {.environment = desktop.session().environment(), .standardOutput = ends[1]});
        ASSERT_TRUE(awaitStart(klova)) << redirection;
        EXPECT_EQ(quitWithT(klova), 0) << redirection;
    }
    ::close(ends[1]);
}

TEST_F(ProgramTest, tellsOfEachKeyToWhoeverReadsAlong) {
    writeFile(settings, kFirstSettings);
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    Process klova({KLOVA_BINARY},
                  {.environment = desktop.session().environment(), .standardOutput = ends[1]});
    ASSERT_TRUE(awaitStart(klova));
    Display display(desktop.server().display());
    std::string said;
    EXPECT_TRUE(waitUntil(display, "a line", [&] {
        keyboard.tap(XKB_KEY_n);
        std::array<char, 4096> some{};
        const auto size = ::read(ends[0], some.data(), some.size());
        said.append(some.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        return said.ends_with("\n[]\n");
    })) << said;
    EXPECT_EQ(quitWithT(klova), 0);
    std::ranges::for_each(ends, ::close);
}

TEST_F(ProgramTest, stopsAtImpossibleKeys) {
    writeFile(settings, R"({"isNotFirstTime": true, "activationKeys": [70000]})");
    Process klova = start();
    EXPECT_EQ(klova.waitExit(kDeadline), 70);
    awaitOutput(desktop.display(), klova, settings.native() + ": activationKeys holds 70000");
}

} // namespace
