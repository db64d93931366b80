#include "settings/LoginController.h"

#include "core/SimulatedDesktop.h"

#include <barrier>
#include <future>

namespace klova::test {
namespace {

class LoginControllerTest : public CoreTest {
protected:
    LoginControllerTest() { loginItems = &desktop.loginItems; }
    void add(const std::optional<FileReference>& program) {
        sim.items.push_back(std::make_shared<SimulatedItem>(program));
    }
};

TEST_F(LoginControllerTest, isAddedAsOftenAsAskedAndRemovedWhereverItIs) {
    add(std::nullopt);
    add(FileReference{"/opt/klova", {1, 10}});     // the same file under another name
    add(FileReference{"/usr/bin/klova", {1, 11}}); // what an upgrade put in its place
    add(FileReference{"/usr/bin/other", {2, 10}}); // the same number on another device
    const std::vector others{sim.items[0], sim.items[3]};
    LoginController::setOpensAtLogin(true);
    LoginController::setOpensAtLogin(true);
    EXPECT_EQ(sim.items.size(), 6U);
    EXPECT_TRUE(LoginController::opensAtLogin());
    LoginController::setOpensAtLogin(false);
    EXPECT_EQ(sim.items, others);
    EXPECT_FALSE(LoginController::opensAtLogin());
    LoginController::setOpensAtLogin(true);
    EXPECT_EQ(sim.items.size(), 3U);
    EXPECT_EQ(sim.items[1], others[1]) << "a new item comes last";
    EXPECT_EQ(sim.takeLog(), Log{"create list"}) << "one handle for all of it";
}

TEST_F(LoginControllerTest, concurrentFirstCallsShareOneHandle) {
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
