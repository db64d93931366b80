// Klova's own panels: their shape with and without a compositor, and their focus.
#include "desktop/TestWindow.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"
#include "platform/x11/Connection.h"
#include "platform/x11/X11Panels.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace klova::x11 {
namespace {

class PanelsTest : public testing::Test {
protected:
    bool untilComposited(bool composited) {
        return rig::waitUntil(desktop.display(), "change of the compositor", [&] {
            while (auto event = connection.poll())
                panels.handle(*event);
            return panels.composited() == composited;
        });
    }

    /// Rows of the window's shape, from the top.
    std::vector<rig::Rect> rows(xcb_shape_kind_t kind) {
        xcb_connection_t* x = desktop.display().get();
        const auto reply = rig::owned(xcb_shape_get_rectangles_reply(
            x, xcb_shape_get_rectangles(x, window.id(), kind), nullptr));
        std::vector<rig::Rect> rows;
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
            const auto& row = xcb_shape_get_rectangles_rectangles(reply.get())[i];
            rows.push_back({row.x, row.y, row.width, row.height});
        }
        return rows;
    }

    rig::VirtualDesktop desktop;
    Connection connection{desktop.server().display().c_str()};
    WindowManager manager{connection};
    XSettings settings{connection};
    X11Panels panels{connection, manager, settings};
    rig::TestWindow window{desktop.server().display(), {.area = {10, 10, 400, 300}}};
};

TEST_F(PanelsTest, areCutOutOnlyWhileThereIsNoCompositor) {
    const PanelFrame frame{28, 30, 20, 36, 400, 300, 4};
    const auto expectFrame = [](const std::vector<rig::Rect>& rows) {
        EXPECT_EQ(rows.front().y, 20);
        EXPECT_EQ(rows.back().bottom(), 300 - 36);
        EXPECT_GT(rows.front().x, 28);
        EXPECT_LT(rows.back().right(), 400 - 30);
        EXPECT_TRUE(std::ranges::any_of(
            rows, [](const auto& row) { return row.x == 28 && row.right() == 370; }));
    };
    int changes = 0;
    panels.setCompositedChanged([&] { ++changes; });
    EXPECT_FALSE(panels.composited());
    panels.setFrame(window.id(), frame);
    connection.roundTrip();
    expectFrame(rows(XCB_SHAPE_SK_BOUNDING));
    expectFrame(rows(XCB_SHAPE_SK_INPUT));
    EXPECT_EQ(desktop.display().values(window.id(), "_GTK_FRAME_EXTENTS"),
              (std::vector<std::uint32_t>{28, 30, 20, 36}));
    {
        const rig::Display compositor(desktop.server().display());
        rig::Display& asking = desktop.display();
        xcb_set_selection_owner(compositor.get(), window.id(), asking.atom("_NET_WM_CM_S0"),
                                XCB_CURRENT_TIME);
        xcb_flush(compositor.get());
        ASSERT_TRUE(untilComposited(true));
        panels.setFrame(window.id(), frame);
        connection.roundTrip();
        EXPECT_EQ(rows(XCB_SHAPE_SK_BOUNDING).front().x, 0);
        expectFrame(rows(XCB_SHAPE_SK_INPUT));
    } // ends without a word
    EXPECT_TRUE(untilComposited(false));
    EXPECT_EQ(changes, 2);
}

TEST_F(PanelsTest, getTheFocusWithoutAnInputEventOfTheirOwn) {
    const rig::TestWindow other(desktop.server().display());
    ASSERT_TRUE(rig::awaitActive(desktop.display(), other.id()));
    panels.activate(window.id());
    EXPECT_TRUE(rig::awaitActive(desktop.display(), window.id()));
    panels.activate(0x7FFFFFF); // a window that is gone
    connection.roundTrip();
    while (auto event = connection.poll())
        panels.handle(*event);
    EXPECT_FALSE(connection.lost());
}

} // namespace
} // namespace klova::x11
