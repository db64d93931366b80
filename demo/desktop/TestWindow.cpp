#include "desktop/TestWindow.h"

#include "desktop/Wait.h"

#include <unistd.h>

namespace klova::rig {
namespace {

std::vector<std::uint32_t> normalHints(const TestWindowOptions& options) {
    constexpr std::uint32_t userPlaced = 1, userSized = 2, minimum = 1U << 4, maximum = 1U << 5,
                            steps = 1U << 6;
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    std::vector<std::uint32_t> hints(18);
    hints[0] = userPlaced | userSized | minimum;
    if (options.stepX > 1 || options.stepY > 1)
        hints[0] |= steps;
    hints[1] = number(options.area.x);
    hints[2] = number(options.area.y);
    hints[3] = number(options.area.width);
    hints[4] = number(options.area.height);
    hints[5] = number(options.minWidth);
    hints[6] = number(options.minHeight);
    hints[9] = number(options.stepX);
    hints[10] = number(options.stepY);
    if (options.fixedSize) {
        hints[0] |= maximum;
        hints[5] = hints[7] = hints[3];
        hints[6] = hints[8] = hints[4];
    }
    return hints;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const InputRecord& record) {
    const char* const names[] = {"key press", "key release", "button press", "button release"};
    return stream << names[record.type - XCB_KEY_PRESS] << ' ' << int{record.detail} << " (state "
                  << record.state << ')';
}

TestWindow::TestWindow(const std::string& display, const TestWindowOptions& options)
    : display_(display) {
    create(options);
    describe(options);
    map();
    if (!options.unmanaged &&
        !display_.values(display_.root(), "_NET_SUPPORTING_WM_CHECK").empty()) {
        Display observer(display);
        require(observer, "management of a test window", [&] { return isSettled(observer, id_); });
    }
}

void TestWindow::create(const TestWindowOptions& options) {
    id_ = xcb_generate_id(display_.get());
    constexpr std::uint32_t input = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
    const std::uint32_t values[] = {display_.screen().white_pixel, options.unmanaged ? 1U : 0U,
                                    options.listens ? input : 0U};
    xcb_create_window(display_.get(), XCB_COPY_FROM_PARENT, id_, display_.root(),
                      static_cast<std::int16_t>(options.area.x),
                      static_cast<std::int16_t>(options.area.y),
                      static_cast<std::uint16_t>(options.area.width),
                      static_cast<std::uint16_t>(options.area.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
}

void TestWindow::describe(const TestWindowOptions& options) {
    display_.setText(id_, "WM_NAME", "STRING", options.title);
    const auto& name = options.windowClass;
    display_.setText(id_, "WM_CLASS", "STRING", name + '\0' + name + '\0');
    display_.setValues(id_, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", normalHints(options));
    constexpr std::uint32_t hasInput = 1;
    display_.setValues(id_, "WM_HINTS", "WM_HINTS",
                       {hasInput, options.inputHint ? 1U : 0U, 0, 0, 0, 0, 0, 0, 0});
    display_.setValues(id_, "_NET_WM_PID", "CARDINAL",
                       {static_cast<std::uint32_t>(options.process.value_or(::getpid()))});
    if (!options.shadow)
        return;
    const auto& shadow = *options.shadow;
    display_.setValues(
        id_, "_GTK_FRAME_EXTENTS", "CARDINAL",
        {static_cast<std::uint32_t>(shadow.left), static_cast<std::uint32_t>(shadow.right),
         static_cast<std::uint32_t>(shadow.top), static_cast<std::uint32_t>(shadow.bottom)});
    // No decorations, please: the Motif hint that every manager knows.
    constexpr std::uint32_t saysDecorations = 2;
    display_.setValues(id_, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {saysDecorations, 0, 0, 0, 0});
}

std::vector<InputRecord> TestWindow::takeInput() {
    display_.roundTrip();
    std::vector<InputRecord> records;
    while (const auto event = display_.nextEvent()) {
        const auto type = static_cast<std::uint8_t>(event->response_type & 0x7F);
        if (type < XCB_KEY_PRESS || type > XCB_BUTTON_RELEASE)
            continue;
        // Key and button events have one layout.
        const auto& input = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        records.push_back({type, input.detail, input.state});
    }
    return records;
}

void TestWindow::map() {
    xcb_map_window(display_.get(), id_);
    display_.roundTrip();
}

void TestWindow::takeFocus() {
    xcb_set_input_focus(display_.get(), XCB_INPUT_FOCUS_PARENT, id_, XCB_CURRENT_TIME);
    display_.roundTrip();
}

void TestWindow::unmap() {
    xcb_unmap_window(display_.get(), id_);
    display_.roundTrip();
}

void TestWindow::withdraw() {
    unmap();
    xcb_unmap_notify_event_t withdrawal{};
    withdrawal.response_type = XCB_UNMAP_NOTIFY;
    withdrawal.event = display_.root();
    withdrawal.window = id_;
    xcb_send_event(display_.get(), 0, display_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&withdrawal));
    display_.roundTrip();
}

void TestWindow::destroy() {
    xcb_destroy_window(display_.get(), id_);
    display_.roundTrip();
}

} // namespace klova::rig
