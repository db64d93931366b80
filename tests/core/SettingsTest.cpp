#include "core/SimulatedDesktop.h"
#include "input/ActivationKeys.h"
#include "settings/DataStorageManager.h"
#include "settings/LoginController.h"

#include <barrier>
#include <future>

namespace klova::test {
namespace {

using Keys = std::vector<KeyCode>;
using Array = std::vector<StoredValue>;
using std::int64_t;

class SettingsTest : public CoreTest {
protected:
    DataStorageManager manager{desktop};
};

TEST_F(SettingsTest, whatTheFirstRunSavesALaterOneLoads) {
    EXPECT_TRUE(manager.isFirstTimeAndManage());
    EXPECT_FALSE(manager.isFirstTimeAndManage());
    activationKeys = {55, 59};
    manager.saveKeys();
    manager.saveMaxCenterSettings();
    manager.saveDeminimizeButton();
    manager.saveStartupSettings(true);
    activationKeys.clear();
    deminimizeButton = 0;
    sim.stored["centeringEnabled"] = false;
    manager.writeToGlobalActivationKeys();
    manager.writeToMaxCenterSettings();
    manager.writeToDeminimizeButton();
    EXPECT_EQ(activationKeys, (Keys{55, 59}));
    EXPECT_EQ(deminimizeButton, 8);
    EXPECT_TRUE(maximizingEnabled);
    EXPECT_FALSE(centeringEnabled);
    EXPECT_TRUE(manager.isLaunchingOnStartup());
}

TEST_F(SettingsTest, storedKeysAreTakenWholeOrNotAtAll) {
    const Keys fallback{59, 55};
    const std::pair<SimulatedDesktop::Stored, Keys> rows[] = {
        {Array{}, {}},
        {Array{int64_t{63}, int64_t{0}, int64_t{65535}, int64_t{0}}, {63, 0, 65535, 0}},
        {Array{55.9, 65535.0}, {55, 65535}},
        {Array{int64_t{55}, std::string("59")}, fallback},
        {Array{int64_t{70000}, std::string("x")}, fallback},
        {Array{std::monostate{}}, fallback},
        {int64_t{55}, fallback},
    };
    for (const auto& [value, keys] : rows) {
        sim.stored["activationKeys"] = value;
        manager.writeToGlobalActivationKeys();
        EXPECT_EQ(activationKeys, keys) << "row " << (&value - &rows[0].first);
    }
}

TEST_F(SettingsTest, aNumberThatIsNoKeyCodeStopsTheProcess) {
    const std::pair<StoredValue, const char*> rows[] = {
        {int64_t{65536}, "65536"}, {int64_t{-1}, "-1"}, {1e300, "1e+300"}, {65535.5, "65535.5"}};
    for (const auto& [number, text] : rows) {
        sim.stored["activationKeys"] = Array{int64_t{55}, number};
        EXPECT_EQ(fatalMessage([&] { manager.writeToGlobalActivationKeys(); }),
                  "/home/somebody/preferences.json: activationKeys holds " + std::string(text) +
                      ", which is no key code");
    }
}

TEST_F(SettingsTest, concurrentFirstCallsForTheLoginItemsShareOneHandle) {
    loginItems = &desktop.loginItems;
    std::barrier start(8);
    std::vector<std::future<LSSharedFileListRef>> callers(8);
    for (auto& caller : callers)
        caller = std::async(std::launch::async, [&] {
            start.arrive_and_wait();
            return LoginController::sharedFileList();
        });
    for (auto& caller : callers)
        EXPECT_EQ(caller.get(), LoginController::sharedFileList());
    EXPECT_EQ(sim.takeLog(), Log{"create list"});
}

} // namespace
} // namespace klova::test
