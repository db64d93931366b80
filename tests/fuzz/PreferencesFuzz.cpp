// Reads any bytes as the settings file: nothing crashes, a broken file is kept to the byte, and
// what is saved afterwards is read again as it was.
#include "core/SimulatedDesktop.h"
#include "input/ActivationKeys.h"
#include "platform/freedesktop/JsonPreferencesStore.h"
#include "settings/DataStorageManager.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace klova;

namespace {

void expect(bool holds) {
    if (!holds)
        std::abort();
}

struct Folder {
    std::string name = std::filesystem::temp_directory_path() / "klova-fuzz-XXXXXX";
    const std::filesystem::path path = ::mkdtemp(name.data());
    ~Folder() { std::filesystem::remove_all(path); }
};

/// All settings as the program has them after its start. Nothing where it refuses to start.
auto settings(PreferencesStore& store, test::SimulatedDesktop& sim) {
    Desktop desktop{sim, sim, sim, sim, sim, sim, store, sim, sim};
    DataStorageManager manager(desktop);
    const auto fault = test::fatalMessage([&] { manager.writeToGlobalActivationKeys(); });
    manager.writeToMaxCenterSettings();
    manager.writeToDeminimizeButton();
    return std::tuple(fault, activationKeys, maximizingEnabled, centeringEnabled, deminimizeButton,
                      manager.isLaunchingOnStartup(), store.arrayForKey("activationKeys"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    static test::SimulatedDesktop sim;
    const auto file = folder.path / "preferences.json";
    const auto broken = folder.path / "preferences.json.broken";
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::ofstream(file, std::ios::binary) << text;
    JsonPreferencesStore store(file);
    if (!std::filesystem::exists(file)) {
        std::ifstream kept(broken, std::ios::binary);
        expect(std::string(std::istreambuf_iterator<char>(kept), {}) == text);
        std::filesystem::remove(broken);
    }
    const auto before = settings(store, sim);
    store.setBool(!store.boolForKey("isNotFirstTime"), "isNotFirstTime");
    JsonPreferencesStore again(file);
    expect(!std::filesystem::exists(broken) && settings(again, sim) == before);
    expect(again.boolForKey("isNotFirstTime") == store.boolForKey("isNotFirstTime"));
    return 0;
}
