#include "input/SnapKeys.h"

#include "platform/KeyCodes.h"

#include <algorithm>
#include <array>

namespace klova {
namespace {

struct SingleKey {
    std::int64_t code;
    std::string_view position;
};

constexpr std::array<SingleKey, 8> kSingleKeys{{
    {key::leftArrow, "Left"},
    {key::a, "Left"},
    {key::upArrow, "Top"},
    {key::w, "Top"},
    {key::rightArrow, "Right"},
    {key::d, "Right"},
    {key::downArrow, "Bottom"},
    {key::s, "Bottom"},
}};

struct KeyPair {
    std::int64_t first, second;
    std::string_view position;
};

/// The first pair that is held wins. A letter never pairs with an arrow.
constexpr std::array<KeyPair, 8> kKeyPairs{{
    {key::leftArrow, key::upArrow, "TopLeft"},
    {key::a, key::w, "TopLeft"},
    {key::rightArrow, key::upArrow, "TopRight"},
    {key::d, key::w, "TopRight"},
    {key::leftArrow, key::downArrow, "BottomLeft"},
    {key::a, key::s, "BottomLeft"},
    {key::rightArrow, key::downArrow, "BottomRight"},
    {key::d, key::s, "BottomRight"},
}};

} // namespace

bool isDirectionKey(std::int64_t code) {
    return std::ranges::find(kSingleKeys, code, &SingleKey::code) != kSingleKeys.end();
}

std::optional<std::string_view> positionForKeys(std::span<const std::int64_t> keys) {
    if (keys.size() == 1) {
        const auto* row = std::ranges::find(kSingleKeys, keys.front(), &SingleKey::code);
        return row != kSingleKeys.end() ? std::optional(row->position) : std::nullopt;
    }
    const auto held = [keys](std::int64_t code) {
        return std::ranges::find(keys, code) != keys.end();
    };
    const auto* row = std::ranges::find_if(
        kKeyPairs, [&](const KeyPair& pair) { return held(pair.first) && held(pair.second); });
    return row != kKeyPairs.end() ? std::optional(row->position) : std::nullopt;
}

} // namespace klova
