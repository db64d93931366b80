#include "Listener.h"

#include <chrono>
#include <thread>
#include <utility>
#include <xcb/composite.h>
#include <xcb/xinput.h>

namespace klova::stress {
namespace {

constexpr std::uint16_t kButtons = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;

/// Asks until it is granted, for at most a second.
template <typename Ask> bool ask(const Ask& grab) {
    using Clock = std::chrono::steady_clock;
    for (const auto end = Clock::now() + std::chrono::seconds(1); Clock::now() < end;) {
        if (const auto reply = rig::owned(grab()); reply->status == XCB_GRAB_STATUS_SUCCESS)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

} // namespace

Listener::Listener(const std::string& display) : display_(display) {
    rig::owned(xcb_input_xi_query_version_reply(
        display_.get(), xcb_input_xi_query_version(display_.get(), 2, 2), nullptr));
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display_.get(), display_.root(), XCB_CW_EVENT_MASK, &mask);
    listenTo(display_.root());
    listenToTree(display_.root());
    makeWindow();
    repeatKeys(false);
    rig::owned(xcb_composite_query_version_reply(
        display_.get(), xcb_composite_query_version(display_.get(), 0, 3), nullptr));
}

/// By XInput2, which marks repetitions. To whom shares a window with a client that wants presses
/// only the server's core events tell a release with each of them.
void Listener::listenTo(xcb_window_t window) {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE};
    xcb_input_xi_select_events(display_.get(), window, 1, &selection.head);
}

/// The windows below it, such as those that managers give the focus to when nobody else is there.
void Listener::listenToTree(xcb_window_t top) {
    const auto tree = rig::owned(
        xcb_query_tree_reply(display_.get(), xcb_query_tree(display_.get(), top), nullptr));
    for (int i = 0; tree && i < tree->children_len; ++i) {
        const xcb_window_t child = xcb_query_tree_children(tree.get())[i];
        listenTo(child);
        listenToTree(child);
    }
}

void Listener::makeWindow() {
    window_ = xcb_generate_id(display_.get());
    const std::uint32_t values[] = {display_.screen().white_pixel, kButtons};
    xcb_create_window(display_.get(), XCB_COPY_FROM_PARENT, window_, display_.root(), 300, 200, 840,
                      500, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    display_.setText(window_, "WM_NAME", "STRING", "Listener");
    display_.setText(window_, "WM_CLASS", "STRING", std::string("Listener\0Listener\0", 18));
    constexpr std::uint32_t hasInput = 1;
    display_.setValues(window_, "WM_HINTS", "WM_HINTS", {hasInput, 1, 0, 0, 0, 0, 0, 0, 0});
    listenTo(window_);
    xcb_map_window(display_.get(), window_);
}

void Listener::takeFocus() {
    xcb_set_input_focus(display_.get(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    display_.roundTrip();
}

void Listener::showPad(bool shown) {
    if (shown == (overlay_ != XCB_NONE))
        return;
    if (shown) {
        makePad();
    } else {
        xcb_composite_release_overlay_window(display_.get(), display_.root());
        overlay_ = XCB_NONE;
    }
    display_.roundTrip();
}

void Listener::makePad() {
    // The server itself keeps this window above all others.
    const auto reply = rig::owned(xcb_composite_get_overlay_window_reply(
        display_.get(), xcb_composite_get_overlay_window(display_.get(), display_.root()),
        nullptr));
    overlay_ = reply ? reply->overlay_win : display_.root();
    const std::uint32_t mask = kButtons;
    const auto pad = xcb_generate_id(display_.get());
    xcb_create_window(display_.get(), 0, pad, overlay_, 0, 0, display_.screen().width_in_pixels,
                      display_.screen().height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_map_window(display_.get(), pad);
}

void Listener::attend() {
    display_.roundTrip();
    while (const auto event = display_.nextEvent()) {
        const auto type = static_cast<std::uint8_t>(event->response_type & 0x7F);
        if (type == XCB_CREATE_NOTIFY)
            listenTo(reinterpret_cast<const xcb_create_notify_event_t&>(*event).window);
        else
            note(*event);
    }
    display_.roundTrip();
}

void Listener::note(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
    const auto& core = reinterpret_cast<const xcb_key_press_event_t&>(event);
    const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    if (type >= XCB_KEY_PRESS && type <= XCB_BUTTON_RELEASE) // which have one layout
        record_.push_back({type, core.detail, core.time});
    else if (type == XCB_GE_GENERIC && (key.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) == 0)
        record_.push_back({key.event_type == XCB_INPUT_KEY_PRESS ? std::uint8_t{XCB_KEY_PRESS}
                                                                 : std::uint8_t{XCB_KEY_RELEASE},
                           static_cast<std::uint8_t>(key.detail), key.time});
}

void Listener::repeatKeys(bool repeats) {
    const std::uint32_t mode = repeats ? XCB_AUTO_REPEAT_MODE_ON : XCB_AUTO_REPEAT_MODE_OFF;
    xcb_change_keyboard_control(display_.get(), XCB_KB_AUTO_REPEAT_MODE, &mode);
    display_.roundTrip();
}

std::vector<Heard> Listener::take() {
    attend();
    return std::exchange(record_, {});
}

bool Listener::grabKeyboard() {
    return ask([this] {
        return xcb_grab_keyboard_reply(display_.get(),
                                       xcb_grab_keyboard(display_.get(), 0, display_.root(),
                                                         XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                                         XCB_GRAB_MODE_ASYNC),
                                       nullptr);
    });
}

bool Listener::grabPointer() {
    return ask([this] {
        return xcb_grab_pointer_reply(display_.get(),
                                      xcb_grab_pointer(display_.get(), 0, display_.root(), kButtons,
                                                       XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                                       XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                                      nullptr);
    });
}

void Listener::freeKeyboard() {
    xcb_ungrab_keyboard(display_.get(), XCB_CURRENT_TIME);
    display_.roundTrip();
}

void Listener::freePointer() {
    xcb_ungrab_pointer(display_.get(), XCB_CURRENT_TIME);
    display_.roundTrip();
}

} // namespace klova::stress
