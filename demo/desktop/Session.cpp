#include "desktop/Session.h"

#include "desktop/DisplayKey.h"

#include <cstdlib>

namespace klova::rig {
namespace {

Environment inherited() {
    Environment environment;
    for (const char* name : {"PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char* value = std::getenv(name))
            environment[name] = value;
    return environment;
}

Environment environmentFor(const std::filesystem::path& directory, const std::string& display) {
    auto environment = inherited();
    const auto home = directory / "home";
    const auto runtime = directory / "run";
    std::filesystem::create_directories(home / ".config");
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    environment.insert({{"DISPLAY", display},
                        {"XAUTHORITY", displayKey()},
                        {"HOME", home},
                        {"XDG_CONFIG_HOME", home / ".config"},
                        {"XDG_CACHE_HOME", home / ".cache"},
                        {"XDG_DATA_HOME", home / ".local/share"},
                        {"XDG_RUNTIME_DIR", runtime},
                        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (runtime / "bus").string()},
                        {"GSETTINGS_BACKEND", "memory"},
                        {"GIO_USE_VFS", "local"}, // the other one ends programs with the bus
                        {"LANG", "C.UTF-8"},
                        {"NO_AT_BRIDGE", "1"},
                        {"LIBGL_ALWAYS_SOFTWARE", "1"}});
    return environment;
}

} // namespace

Session::Session(const std::string& display)
    : environment_(environmentFor(directory_.path(), display)), bus_(startBus()) {}

void Session::setVariable(const std::string& name, const std::string& value) {
    environment_[name] = value;
}

void Session::setClock(const std::string& offset) {
    const auto file = directory() / "clock";
    writeFile(file, offset);
    if (environment_.contains("FAKETIME_TIMESTAMP_FILE"))
        return;
    environment_.insert({{"LD_PRELOAD", "/usr/$LIB/faketime/libfaketimeMT.so.1"},
                         {"FAKETIME_TIMESTAMP_FILE", file},
                         {"FAKETIME_NO_CACHE", "1"},
                         {"DONT_FAKE_MONOTONIC", "1"}});
    environment_["ASAN_OPTIONS"] += ":verify_asan_link_order=0"; // it wants to be the first library
}

Process Session::launch(const std::vector<std::string>& command) {
    const auto name = std::filesystem::path(command.front()).filename().string();
    const auto output = directory() / (name + "-" + std::to_string(++launched_) + ".log");
    return {command, {.environment = environment_, .output = output}};
}

Process Session::startBus() {
    const auto& address = environment_.at("DBUS_SESSION_BUS_ADDRESS");
    auto bus = launch({"dbus-daemon", "--session", "--nofork", "--address=" + address});
    awaitFile(bus, directory() / "run" / "bus");
    return bus;
}

} // namespace klova::rig
