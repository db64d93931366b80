#include "platform/x11/KeyMap.h"

#include "platform/x11/Connection.h"

#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <xkbcommon/xkbcommon-x11.h>

namespace klova::x11 {
namespace {

constexpr std::array<std::pair<std::string_view, KeyCode>, 12> kPlaces{{
    {"AC01", key::a},
    {"AC02", key::s},
    {"AC03", key::d},
    {"AB03", key::c},
    {"AD01", key::q},
    {"AD02", key::w},
    {"AD03", key::e},
    {"AD05", key::t},
    {"LEFT", key::leftArrow},
    {"RGHT", key::rightArrow},
    {"DOWN", key::downArrow},
    {"UP", key::upArrow},
}};

constexpr std::array<std::pair<xkb_keysym_t, KeyCode>, 9> kModifierKeys{{
    {XKB_KEY_Super_L, key::command},
    {XKB_KEY_Super_R, key::rightCommand},
    {XKB_KEY_Shift_L, key::shift},
    {XKB_KEY_Shift_R, key::rightShift},
    {XKB_KEY_Alt_L, key::option},
    {XKB_KEY_Alt_R, key::rightOption},
    {XKB_KEY_Control_L, key::control},
    {XKB_KEY_Control_R, key::rightControl},
    {XKB_KEY_XF86Fn, key::fn},
}};

template <typename Table, typename Name> KeyCode lookUp(const Table& table, const Name& name) {
    for (const auto& [entry, code] : table)
        if (entry == name)
            return code;
    return kNoKeyCode;
}

KeyCode codeOf(xkb_keymap* map, xkb_keycode_t keycode) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(map, keycode, 0, 0, &symbols) == 1)
        if (const KeyCode code = lookUp(kModifierKeys, symbols[0]); code != kNoKeyCode)
            return code;
    const char* name = xkb_keymap_key_get_name(map, keycode);
    return name == nullptr ? kNoKeyCode : lookUp(kPlaces, std::string_view(name));
}

/// Of the first group, which is the one that a keyboard of several alphabets was made with.
std::string legendOf(xkb_keymap* map, xkb_keycode_t keycode) {
    const xkb_keysym_t* symbols = nullptr;
    std::array<char, 8> text{};
    if (xkb_keymap_key_get_syms_by_level(map, keycode, 0, 0, &symbols) == 1)
        xkb_keysym_to_utf8(xkb_keysym_to_upper(symbols[0]), text.data(), text.size());
    return text.data();
}

struct Unref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* map) const { xkb_keymap_unref(map); }
};

void readModifiers(Connection& connection, KeyMap& map) {
    const auto reply = own(xcb_get_modifier_mapping_reply(
        connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr));
    if (!reply)
        return;
    const auto* keycodes = xcb_get_modifier_mapping_keycodes(reply.get());
    const int count = xcb_get_modifier_mapping_keycodes_length(reply.get());
    for (int i = 0; i < count; ++i)
        if (keycodes[i] != 0)
            map.modifiers[keycodes[i]] |=
                static_cast<std::uint8_t>(1U << (i / reply->keycodes_per_modifier));
}

} // namespace

std::optional<KeyMap> KeyMap::read(Connection& connection) {
    const std::unique_ptr<xkb_context, Unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const auto device = xkb_x11_get_core_keyboard_device_id(connection.get());
    if (!context || device < 0)
        return std::nullopt;
    const std::unique_ptr<xkb_keymap, Unref> keymap(xkb_x11_keymap_new_from_device(
        context.get(), connection.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        return std::nullopt;

    KeyMap map;
    for (xkb_keycode_t keycode = xkb_keymap_min_keycode(keymap.get());
         keycode <= xkb_keymap_max_keycode(keymap.get()) && keycode < map.codes.size(); ++keycode)
        if ((map.codes[keycode] = codeOf(keymap.get(), keycode)) != kNoKeyCode)
            map.legends[map.codes[keycode]] = legendOf(keymap.get(), keycode);
    readModifiers(connection, map);
    return map;
}

std::uint8_t KeyMap::modifiersOf(KeyCode code) const {
    std::uint8_t mask = 0;
    for (std::size_t keycode = 0; keycode < codes.size(); ++keycode)
        if (codes[keycode] == code)
            mask |= modifiers[keycode];
    return mask;
}

std::uint8_t KeyMap::keyFor(std::uint8_t modifier, std::uint8_t preferred) const {
    const auto sets = [&](std::size_t keycode) {
        return isModifier(codes[keycode]) && (modifiers[keycode] & modifier) != 0;
    };
    std::size_t keycode = preferred;
    if (!sets(keycode))
        for (keycode = 0; keycode < codes.size() && !sets(keycode);)
            ++keycode;
    return static_cast<std::uint8_t>(keycode % codes.size()); // 0 is the keycode of no key
}

} // namespace klova::x11
