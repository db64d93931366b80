#include "settings/LoginController.h"

#include "core/SimulatedDesktop.h"

#include <barrier>
#include <future>

namespace klova::test {
namespace {

TEST_F(CoreTest, concurrentFirstCallsForTheLoginItemsShareOneHandle) {
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
