// Reads any bytes as the settings file: nothing crashes, a broken file is kept to the byte, and
// what is saved afterwards is read again as it was.
#include "core/SimulatedDesktop.h"
#include "desktop/Files.h"
#include "input/ActivationKeys.h"
#include "platform/freedesktop/JsonPreferencesStore.h"
#include "settings/DataStorageManager.h"

#include <cstdlib>

using namespace klova;

namespace {

void expect(bool holds) {
    if (!holds)
        std::abort();
}

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
    static const rig::TemporaryDirectory folder;
    static test::SimulatedDesktop sim;
    const auto file = folder.path() / "preferences.json";
    const auto broken = folder.path() / "preferences.json.broken";
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    rig::writeFile(file, text);
    JsonPreferencesStore store(file);
    if (!std::filesystem::exists(file)) {
        expect(rig::readFile(broken) == text);
        std::filesystem::remove(broken);
    }
    const auto before = settings(store, sim);
    store.setBool(!store.boolForKey("isNotFirstTime"), "isNotFirstTime");
    JsonPreferencesStore again(file);
    expect(!std::filesystem::exists(broken) && settings(again, sim) == before);
    expect(again.boolForKey("isNotFirstTime") == store.boolForKey("isNotFirstTime"));
    return 0;
}
