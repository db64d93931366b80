// klova-demo: starts a desktop of its own and plays every gesture on it, leaves it to who opens it
// in a browser, or takes pictures of everything that Klova shows.
#include "Album.h"
#include "Pictures.h"
#include "QuitRequest.h"
#include "Show.h"
#include "Stage.h"
#include "View.h"
#include "desktop/Files.h"

#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

namespace {

using namespace klova;

bool hasDisplay() {
    const char* display = std::getenv("DISPLAY");
    return display != nullptr && *display != '\0';
}

int usage() {
    std::string names;
    for (const auto& name : rig::windowManagerNames())
        names += " " + name;
    std::fprintf(stderr,
                 "usage: klova-demo [window manager]\n"
                 "       klova-demo --view\n"
                 "       klova-demo --pictures <folder>\n"
                 "window managers:%s\n",
                 names.c_str());
    return 2;
}

int run(const std::string& manager, const std::filesystem::path& build) {
    const bool watched = hasDisplay();
    demo::Album album(build.parent_path() / "demo");
    demo::Stage stage({.windowManager = manager,
                       .screen = {1440, 900},
                       .server = watched ? rig::ServerKind::nested : rig::ServerKind::offScreen,
                       .twoMonitors = false});
    demo::Show show(stage, album, build / "klova", std::chrono::milliseconds(watched ? 700 : 0));
    const int faults = show.play();
    const auto animation = album.animate();
    std::printf("%zu pictures and %s\n", album.size(), animation.c_str());
    if (faults != 0)
        std::printf("%d gestures went wrong\n", faults);
    return faults == 0 ? 0 : 1;
}

int takePictures(const std::filesystem::path& folder, const std::filesystem::path& build) {
    std::filesystem::create_directories(folder);
    int count = 0;
    for (const bool composited : {true, false})
        for (const double scale : {1.0, 1.5, 2.0})
            count += demo::Pictures({scale, composited}, build / "klova", folder).take();
    std::printf("%d pictures in %s\n", count, folder.c_str());
    return 0;
}

int serve(const std::filesystem::path& build) {
    demo::View view(build / "klova");
    const auto port = std::to_string(view.port());
    std::printf(
        "%s  (from another machine, first there: ssh -NL %s:127.0.0.1:%s <this machine>)\n\n",
        view.address().c_str(), port.c_str(), port.c_str());
    std::puts(
        "Hold Shift and Alt, which the desktop round your browser seldom keeps for itself; the\n"
        "preferences, behind the icon in the corner, have the other keys. Whoever has the\n"
        "address uses this desktop as you. Ctrl-C ends it.");
    std::fflush(stdout);
    view.serve();
    return 0;
}

bool known(const std::string& manager) {
    const auto& names = rig::windowManagerNames();
    return std::find(names.begin(), names.end(), manager) != names.end();
}

} // namespace

int main(int argc, char** argv) {
    const std::string first = argc > 1 ? argv[1] : "openbox";
    const bool pictures = first == "--pictures";
    const bool view = first == "--view";
    if (argc > 3 || (argc == 3) != pictures || (!pictures && !view && !known(first)))
        return usage();
    // For pictures and captions only: Qt needs no display to paint.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const rig::TemporaryDirectory runtime;
    ::setenv("XDG_RUNTIME_DIR", runtime.path().c_str(), 1);
    const demo::QuitRequest quit; // and not death: folders are to be cleared away
    int qtArgumentCount = 1;
    const QGuiApplication painting(qtArgumentCount, argv);
    try {
        const auto build = std::filesystem::canonical("/proc/self/exe").parent_path();
        return pictures ? takePictures(argv[2], build) : view ? serve(build) : run(first, build);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "klova-demo: %s\n", failure.what());
        return 1;
    }
}
