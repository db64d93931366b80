#include "desktop/Injector.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace klova::rig {

Injector::Injector(const std::string& display) : display_(display) {
    const auto version = owned(xcb_test_get_version_reply(
        display_.get(), xcb_test_get_version(display_.get(), 2, 2), nullptr));
    if (!version)
        throw std::runtime_error("the X server has no XTEST");
}

xcb_keycode_t Injector::keyCode(xcb_keysym_t symbol) {
    const auto* setup = xcb_get_setup(display_.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto reply = owned(xcb_get_keyboard_mapping_reply(
        display_.get(), xcb_get_keyboard_mapping(display_.get(), setup->min_keycode, count),
        nullptr));
    const auto* symbols = reply ? xcb_get_keyboard_mapping_keysyms(reply.get()) : nullptr;
    for (std::uint8_t i = 0; symbols != nullptr && i < count; ++i)
        if (symbols[std::size_t{i} * reply->keysyms_per_keycode] == symbol)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i);
    throw std::runtime_error("no key has the keysym " + std::to_string(symbol));
}

void Injector::setSpacing(std::chrono::microseconds spacing) {
    const char* pace = std::getenv("KLOVA_PACE");
    spacing_ = spacing * (pace != nullptr ? std::max(1, std::atoi(pace)) : 1);
}

void Injector::tap(xcb_keysym_t symbol) {
    const auto code = keyCode(symbol);
    pressCode(code);
    releaseCode(code);
}

void Injector::press(const std::vector<xcb_keysym_t>& symbols) {
    for (const auto symbol : symbols)
        press(symbol);
}

void Injector::release(const std::vector<xcb_keysym_t>& symbols) {
    for (const auto symbol : symbols)
        release(symbol);
}

void Injector::chord(const std::vector<xcb_keysym_t>& held, xcb_keysym_t symbol) {
    press(held);
    tap(symbol);
    release(held);
}

void Injector::click(std::uint8_t button) {
    pressButton(button);
    releaseButton(button);
}

void Injector::mapButtons(const ButtonMap& buttons) {
    constexpr std::uint8_t mouse = 4; // XTEST's own
    auto* connection = display_.get();
    owned(
        xcb_input_open_device_reply(connection, xcb_input_open_device(connection, mouse), nullptr));
    owned(xcb_input_set_device_button_mapping_reply(
        connection,
        xcb_input_set_device_button_mapping(connection, mouse, kButtons, buttons.data()), nullptr));
}

void Injector::mapAllButtons(const ButtonMap& buttons) {
    xcb_set_pointer_mapping(display_.get(), kButtons, buttons.data());
    roundTrip();
}

void Injector::movePointer(int x, int y) { send(XCB_MOTION_NOTIFY, 0, x, y); }

void Injector::useKeyboard(const std::string& name) {
    const auto devices = owned(xcb_input_xi_query_device_reply(
        display_.get(), xcb_input_xi_query_device(display_.get(), XCB_INPUT_DEVICE_ALL), nullptr));
    const auto* extension = xcb_get_extension_data(display_.get(), &xcb_input_id);
    auto each = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
        const auto length =
            static_cast<std::size_t>(xcb_input_xi_device_info_name_length(each.data));
        if (std::string(xcb_input_xi_device_info_name(each.data), length) != name)
            continue;
        keyboard_ = static_cast<std::uint8_t>(each.data->deviceid);
        keyboardEvents_ = static_cast<std::uint8_t>(extension->first_event +
                                                    XCB_INPUT_DEVICE_KEY_PRESS - XCB_KEY_PRESS);
        return;
    }
    throw std::runtime_error("the X server has no keyboard " + name);
}

void Injector::setPlugged(bool plugged) {
    constexpr std::uint8_t bits = 8;
    const std::array<bool, 4> word{plugged}; // the library sends whole ones
    xcb_input_xi_change_property(display_.get(), keyboard_, XCB_PROP_MODE_REPLACE, bits,
                                 display_.atom("Device Enabled"), XCB_ATOM_INTEGER, 1, word.data());
    roundTrip();
}

void Injector::sendKey(std::uint8_t type, xcb_keycode_t code) {
    send(static_cast<std::uint8_t>(type + keyboardEvents_), code, 0, 0, keyboard_);
}

void Injector::send(std::uint8_t type, std::uint8_t detail, int x, int y, std::uint8_t device) {
    awaitTurn();
    next_ = std::max(next_, Clock::now()) + spacing_;
    xcb_test_fake_input(display_.get(), type, detail, XCB_CURRENT_TIME, display_.root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), device);
    xcb_flush(display_.get());
}

void Injector::awaitTurn() {
    if (spacing_.count() == 0)
        return;
    // The kernel's timer is late by more than the shortest spacing: the rest is spent awake.
    std::this_thread::sleep_until(next_ - std::chrono::microseconds(200));
    while (Clock::now() < next_) {
    }
}

} // namespace klova::rig
