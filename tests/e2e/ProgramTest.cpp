#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
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
    bool awaitStart(Process& klova) { return awaitStart(klova, desktop.display()); }
    bool awaitStart(Process& klova, Display& display) {
        const auto control = keyboard.keyCode(XKB_KEY_Control_L);
        return waitUntil(
            display, "Klova to start",
            [&] { return keyReserved(display, control, XCB_MOD_MASK_4); },
            [&] { return klova.output(); });
    }

    std::optional<int> quitWithT(Process& klova) {
        keyboard.press(XKB_KEY_Super_L);
        keyboard.press(XKB_KEY_Control_L);
        keyboard.tap(XKB_KEY_t);
        keyboard.release(XKB_KEY_Control_L);
        keyboard.release(XKB_KEY_Super_L);
        return klova.waitExit(kDeadline);
    }

    /// Where on the screen this colour is seen first.
    std::optional<Rect> find(std::uint32_t colour) {
        const auto& screen = desktop.server().screen();
        auto* connection = desktop.display().get();
        const auto image = owned(xcb_get_image_reply(
            connection,
            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, desktop.display().root(), 0, 0,
                          static_cast<std::uint16_t>(screen.width), 64, ~0U),
            nullptr));
        const auto* pixels =
            reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        for (int i = 0; i < screen.width * 64; ++i)
            if ((pixels[i] & 0xFFFFFFU) == colour)
                return Rect{i % screen.width, i / screen.width, 1, 1};
        return std::nullopt;
    }

    /// Klova's window that no manager has put into a frame.
    std::optional<Rect> findMenu() {
        auto& display = desktop.display();
        const auto tree = owned(xcb_query_tree_reply(
            display.get(), xcb_query_tree(display.get(), display.root()), nullptr));
        for (int i = 0; i < tree->children_len; ++i) {
            const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
            const auto shown = owned(xcb_get_window_attributes_reply(
                display.get(), xcb_get_window_attributes(display.get(), window), nullptr));
            if (shown && shown->map_state == XCB_MAP_STATE_VIEWABLE &&
                display.text(window, "WM_CLASS").starts_with("klova"))
                return clientArea(display, window);
        }
        return std::nullopt;
    }

    bool awaitColour(std::uint32_t shown, std::uint32_t gone) {
        return waitUntil(desktop.display(), "the icon to change",
                         [&] { return find(shown) && !find(gone); });
    }

    VirtualDesktop desktop;
    Injector keyboard{desktop.server().display()};
    std::filesystem::path settings = desktop.session().config() / "klova" / "preferences.json";
};

/// An X server that the test may end.
struct Server {
    explicit Server(const std::string& options = "")
        : process({"sh", "-c", "exec Xvfb -displayfd 1 -nolisten tcp 2>/dev/null " + options},
                  {.environment = {{"PATH", ::getenv("PATH")}}, .output = directory.path() / "n"}) {
        for (int turn = 0; turn < 2000 && process.output().find('\n') == std::string::npos; ++turn)
            process.waitExit(5ms);
        display = ":" + process.output().substr(0, process.output().find('\n'));
    }
    TemporaryDirectory directory;
    Process process;
    std::string display;
};

TEST_F(ProgramTest, theFirstRunWritesTheSettingsAndLaterOnesLeaveThemAlone) {
    struct stat first {
    }, later{};
    for (const std::string line : {"Opened for First Time!\n", "[55, 59]\n", "[55, 59]\n"}) {
        Process klova = start();
        ASSERT_TRUE(awaitStart(klova));
        EXPECT_NE(klova.output().find(line), std::string::npos) << klova.output();
        klova.signal(line[0] == 'O' ? SIGINT : SIGTERM);
        EXPECT_EQ(klova.waitExit(kDeadline), 0);
        EXPECT_EQ(withoutBlanks(readFile(settings)), kFirstSettings);
        ASSERT_EQ(::stat(settings.c_str(), line[0] == 'O' ? &first : &later), 0);
    }
    EXPECT_EQ(first.st_ino, later.st_ino);
    EXPECT_EQ(first.st_mtim.tv_nsec, later.st_mtim.tv_nsec);
}

TEST_F(ProgramTest, endsWithOneSentenceWhereItCannotRun) {
    Process running = start();
    ASSERT_TRUE(awaitStart(running));
    const Server withoutRandR("-extension RANDR");
    const std::string here = desktop.server().display();
    const std::vector<std::tuple<std::string, std::string, int, std::string>> rows = {
        {here, "", 0, "klova: already running on display " + here + ".\n"},
        {":31999", "", 69, "klova: cannot reach the display \":31999\".\n"},
        {"", "", 69, "klova: no display: DISPLAY is not set.\n"},
        {withoutRandR.display, "", 69, "klova: this X server does not offer RandR 1.5.\n"},
        {here, "--fast", 64, "klova: takes no arguments but --help or --version.\n"}};
    for (const auto& [display, argument, status, sentence] : rows) {
        desktop.session().setVariable("DISPLAY", display);
        Process klova = argument.empty() ? start() : desktop.launch({KLOVA_BINARY, argument});
        EXPECT_EQ(klova.waitExit(kDeadline), status) << sentence;
        EXPECT_EQ(klova.output(), sentence);
    }
    EXPECT_EQ(quitWithT(running), 0) << "the first instance goes on";
}

TEST_F(ProgramTest, saysThatTheServerHasGone) {
    for (const int signal : {SIGTERM, SIGKILL}) {
        const Server server;
        desktop.session().setVariable("DISPLAY", server.display);
        Process klova = start();
        Display onlooker(server.display);
        ASSERT_TRUE(awaitStart(klova, onlooker));
        server.process.signal(signal);
        EXPECT_EQ(klova.waitExit(kDeadline), 69);
        const std::string said = klova.output();
        EXPECT_EQ(said.substr(said.rfind('\n', said.size() - 2) + 1),
                  "klova: the X server has gone.\n");
    }
}

TEST_F(ProgramTest, runsWhereNobodyReadsItsOutput) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    const std::string block(4096, 'x');
    while (::write(ends[1], block.data(), block.size()) > 0)
        ;
    ::fcntl(ends[1], F_SETFL, 0);
    for (const std::string redirection : {"", ">&-", "<&- >&- 2>&-", "closed pipe"}) {
        if (redirection == "closed pipe")
            ::close(ends[0]);
        const bool pipe = redirection.empty() || redirection == "closed pipe";
        Process klova({"sh", "-c", "exec \"$0\" " + (pipe ? "" : redirection), KLOVA_BINARY},
                      {.environment = desktop.session().environment(),
                       .output = {},
                       .standardOutput = pipe ? ends[1] : -1});
        ASSERT_TRUE(awaitStart(klova)) << redirection;
        EXPECT_EQ(quitWithT(klova), 0) << redirection;
    }
    ::close(ends[1]);
}

TEST_F(ProgramTest, startsAfreshFromBrokenSettingsAndStopsAtImpossibleKeys) {
    for (const std::string text : {"", "{\"isNotFirstTime\": tr", "[]"}) {
        std::filesystem::remove_all(settings.parent_path());
        writeFile(settings, text);
        Process klova = start();
        ASSERT_TRUE(awaitStart(klova));
        EXPECT_NE(klova.output().find("Opened for First Time!"), std::string::npos);
        EXPECT_NE(klova.output().find(settings.native() + ".broken"), std::string::npos);
        EXPECT_EQ(readFile(settings.native() + ".broken"), text);
        EXPECT_EQ(withoutBlanks(readFile(settings)), kFirstSettings);
    }
    for (const std::string keys : {"70000", "-1", "1e300"}) {
        writeFile(settings, "{\"isNotFirstTime\": true, \"activationKeys\": [" + keys + "]}");
        Process klova = start();
        EXPECT_EQ(klova.waitExit(kDeadline), 70);
        for (const std::string& part : {settings.native(), std::string("activationKeys"),
                                        keys == "1e300" ? std::string("1e+300") : keys})
            EXPECT_NE(klova.output().find(part), std::string::npos) << klova.output();
    }
    writeFile(settings, R"({"isNotFirstTime": true, "activationKeys": [55, "x"]})");
    Process klova = start();
    ASSERT_TRUE(awaitStart(klova));
    EXPECT_NE(klova.output().find("[59, 55]\n"), std::string::npos);
}

TEST_F(ProgramTest, theTrayIconShowsWhetherTheGesturesAreArmedAndQuits) {
    constexpr std::uint32_t resting = 0x7D8591;
    constexpr std::uint32_t armed = 0x0B57D0;
    Process klova = start();
    ASSERT_TRUE(awaitStart(klova));
    const auto tray = desktop.launch({"trayer", "--edge", "top", "--height", "24"});
    ASSERT_TRUE(awaitColour(resting, armed)) << "in a tray that came later";
    keyboard.press(XKB_KEY_Super_L);
    keyboard.press(XKB_KEY_Control_L);
    EXPECT_TRUE(awaitColour(armed, resting));
    keyboard.release(XKB_KEY_Super_L);
    EXPECT_TRUE(awaitColour(resting, armed));
    keyboard.release(XKB_KEY_Control_L);

    const Rect icon = find(resting).value_or(Rect{});
    keyboard.movePointer(icon.x, icon.y);
    keyboard.click(1);
    ASSERT_TRUE(waitUntil(desktop.display(), "the menu", [&] { return findMenu().has_value(); }));
    const Rect menu = findMenu().value_or(Rect{});
    keyboard.movePointer(menu.x + menu.width / 2, menu.y + menu.height / 2);
    keyboard.click(1);
    EXPECT_EQ(klova.waitExit(kDeadline), 0);
}

} // namespace
