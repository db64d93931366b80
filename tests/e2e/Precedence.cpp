#include "desktop/Precedence.h"

#include <gtest/gtest.h>

namespace {

class Precedence final : public testing::Environment {
    void SetUp() override { klova::rig::takePrecedence(); }
};

const auto* const precedence = testing::AddGlobalTestEnvironment(new Precedence);

} // namespace
