#include "Stage.h"

#include "Canvas.h"
#include "desktop/Files.h"
#include "desktop/Trays.h"
#include "desktop/Windows.h"

#include <stdexcept>

namespace klova::demo {
namespace {

constexpr auto kLetter = R"(Dear reader,

this window decorates itself: title bar and
buttons are drawn by the program, not by the
window manager.

Klova moves it all the same.
)";

constexpr auto kTerminalShow =
    "printf '\\033[1mA terminal\\033[0m grows by whole\\ncharacters only.\\n\\n"
    "Klova keeps it at the edges\\nthat a gesture names.\\n\\n$ '; exec cat";

} // namespace

Stage::Stage(const rig::DesktopOptions& options)
    : desktop_(options), tray_(rig::startCornerTray(desktop_)) {
    paintBackground(display());
    const auto letter = desktop_.session().home() / "Letter.txt";
    rig::writeFile(letter, kLetter);
    start("Terminal",
          {"xterm", "-fa", "DejaVu Sans Mono", "-fs", "11", "-bg", "#1d2433", "-fg", "#dfe6f0",
           "-geometry", "60x18", "-T", "Terminal", "-e", "sh", "-c", kTerminalShow},
          {70, 60, 560, 400});
    start("Editor", {"env", "GTK_CSD=1", "mousepad", "--disable-server", letter},
          {420, 250, 640, 420});
    start("Clock",
          {"xclock", "-analog", "-update", "60", "-bg", "#f4f1ea", "-hd", "#b5402a", "-hl",
           "#1d2433", "-title", "Clock", "-xrm", "xclock.input: True"},
          {980, 110, 330, 340});
}

void Stage::start(const std::string& name, const std::vector<std::string>& command,
                  const rig::Rect& place) {
    Program program{name, desktop_.launch(command)};
    program.window = rig::awaitWindow(display(), program.process);
    const auto limits = rig::sizeLimits(display(), program.window);
    // Where it starts does not matter to the pixel.
    const int slack = std::max(limits.stepX, limits.stepY);
    if (!rig::activate(display(), program.window) ||
        !rig::place(display(), program.window, place, slack))
        throw std::runtime_error(name + " cannot be put in its first place");
    programs_.push_back(std::move(program));
}

} // namespace klova::demo
