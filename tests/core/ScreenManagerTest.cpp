#include "geometry/ScreenManager.h"

#include "core/SimulatedDesktop.h"
#include "geometry/Description.h"

#include <limits>
#include <tuple>

namespace klova::test {
namespace {

constexpr Screen kLeft{{{0, 0}, {1440, 900}}, 1};
constexpr Screen kRight{{{1440, 40}, {1920, 1080}}, 2};
constexpr Screen kNegative{{{-1024, 0}, {1024, 768}}, 1};

/// A frame of 200 x 100 about a horizontal centre.
constexpr Frame centredAt(double x) { return {{x - 100, 700}, {200, 100}}; }

TEST(Description, readsBackExactlyAndMarksWholeNumbers) {
    EXPECT_EQ(description(720), "720.0");
    EXPECT_EQ(description(100000), "100000.0");
    EXPECT_EQ(description(-0.1), "-0.1");
    EXPECT_EQ(description(1e300), "1e+300");
    EXPECT_EQ(description(std::numeric_limits<double>::denorm_min()).substr(0, 4), "0.00");
    EXPECT_EQ(description(Frame{{1.5, 2}, {3, 4}}), "(1.5, 2.0, 3.0, 4.0)");
    EXPECT_EQ(description(std::optional<Point>({5, 6})), "Optional((5.0, 6.0))");
    EXPECT_EQ(description(std::optional<Point>()), "nil");
}

class ScreenManagerTest : public CoreTest {};

TEST_F(ScreenManagerTest, theSumOfWidthsDecidesWhichScreenHoldsAFrame) {
    constexpr Screen beyond{{{0, 0}, {200, 100}}, 1};
    constexpr Screen upper{{{0, 0}, {800, 600}}, 1}, lower{{{0, 600}, {1000, 700}}, 1};
    constexpr Screen far{{{5000, 0}, {1000, 700}}, 1};
    const std::vector<Screen> sorted{kLeft, kRight}, swapped{kRight, kLeft},
        negative{kLeft, kNegative}, stacked{upper, lower}, turned{lower, upper}, gap{upper, far};
    const std::tuple<std::vector<Screen>, double, Screen> rows[] = {
        {sorted, 1439.5, kLeft},     {sorted, 1440, kRight}, {swapped, 1439.5, kLeft},
        {sorted, 3359.5, kRight},    {sorted, 3360, beyond}, {sorted, -5000, kLeft},
        {negative, -0.5, kNegative}, {negative, 0, kLeft},   {stacked, 799, upper},
        {turned, 799, lower},        {stacked, 1799, lower}, {gap, 1700, far},
        {gap, 5500, beyond}};
    for (const auto& [screens, centre, expected] : rows) {
        sim.screenList = screens;
        EXPECT_EQ(ScreenManager(sim).getCurrentScreenSize(centredAt(centre)), expected.frame)
            << "centre " << centre << " of " << screens.size();
    }
}

TEST_F(ScreenManagerTest, placesEachPositionOnTheHoldingScreen) {
    constexpr Frame half{{0, 0}, {100, 100}};
    const std::pair<std::string, Frame> rows[] = {{"Left", {{1440, 0}, {960, 1080}}},
                                                  {"Right", {{2400, 0}, {960, 1080}}},
                                                  {"Top", {{1440, 0}, {1920, 540}}},
                                                  {"Bottom", {{1440, 540}, {1920, 540}}},
                                                  {"TopLeft", {{1440, 0}, {960, 540}}},
                                                  {"TopRight", {{2400, 0}, {960, 540}}},
                                                  {"BottomLeft", {{1440, 540}, {960, 540}}},
                                                  {"BottomRight", {{2400, 540}, {960, 540}}},
                                                  {"left", half},
                                                  {"", half}};
    sim.screenList = {kRight, kLeft};
    for (const auto& [position, expected] : rows) {
        ScreenManager screens(sim);
        EXPECT_EQ(screens.frameForAlignment(centredAt(2000), position), expected) << position;
        EXPECT_EQ(screens.frameForAlignment(centredAt(4000), position), half) << "beyond them";
    }
}

TEST_F(ScreenManagerTest, maximizesAndCentersOnTheHoldingScreen) {
    sim.screenList = {kRight, kLeft};
    ScreenManager screens(sim);
    const Frame beyond{{0, 0}, {200, 100}};
    EXPECT_EQ(screens.frameForMaximizing(centredAt(0), "Left"), kLeft.frame);
    EXPECT_EQ(screens.frameForMaximizing(centredAt(2000), "Left"),
              (Frame{{1440, 0}, kRight.frame.size}));
    EXPECT_EQ(screens.frameForMaximizing(centredAt(0), "Right"), (Frame{{720, 0}, {1440, 900}}));
    EXPECT_EQ(screens.frameForMaximizing(centredAt(4000), "Left"), beyond);
    EXPECT_EQ(screens.frameForCentering(centredAt(0)), (Frame{{360, 225}, {720, 450}}));
    EXPECT_EQ(screens.frameForCentering(centredAt(2000)), (Frame{{1920, 270}, {960, 540}}));
    EXPECT_EQ(screens.frameForCentering(centredAt(4000)), beyond);
}

TEST_F(ScreenManagerTest, copesWithoutScreensUntilOneHasToBeChosen) {
    sim.screenList.reset();
    ScreenManager screens(sim);
    screens.organizeScreens();
    screens.getScreenSizes();
    EXPECT_EQ(screens.getAmountOfScreens(), 0U);
    EXPECT_NE(fatalMessage([&] { screens.frameForCentering({}); }), "");
    sim.screenList = {kLeft, kRight};
    EXPECT_EQ(screens.getAmountOfScreens(), 2U);
    screens.setScreenFrames(std::vector<Screen>{});
    EXPECT_NE(fatalMessage([&] { screens.frameForAlignment({}, "Left"); }), "");
}

} // namespace
} // namespace klova::test
