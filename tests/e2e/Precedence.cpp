// Lets a test and all that it starts go ahead of the machine's other work where the system permits
// it: input comes at the pace of a quick hand, and a desktop that cannot keep up loses clicks.

#include <gtest/gtest.h>
#include <sched.h>

namespace {

class Precedence final : public testing::Environment {
    void SetUp() override {
        const sched_param lowest{.sched_priority = ::sched_get_priority_min(SCHED_RR)};
        ::sched_setscheduler(0, SCHED_RR, &lowest);
    }
};

const auto* const precedence = testing::AddGlobalTestEnvironment(new Precedence);

} // namespace
