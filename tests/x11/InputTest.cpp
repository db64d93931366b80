#include "platform/x11/ClickCounter.h"
#include "platform/x11/HeldKeys.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/PassiveGrabs.h"
#include "platform/x11/XSettings.h"

#include <array>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <tuple>

namespace klova::x11 {
namespace {

TEST(HeldKeys, TellEachTransitionOnce) {
    // Super, the super key of an Other keyboard and Control: capitals go down, small letters up.
    // A: Super of any keyboard. K: Super sticks. X: Control again under a map that makes it Shift.
    // !: only Control is really down.
    const std::pair<std::string, std::string> rows[] = {
        {"SSss", "55 . 55 . "},
        {"sSs", ". 55 55 "},
        {"SCScsC", "55 59 . 59 55 59 "},
        {"SOso", "55 . . 55 "},
        {"OSoSs", "55 . . . 55 "},
        {"CXcXc", "59 . 59 56 56 "},
        {"SOC!!sc", "55 . 59 55 . . 59 "},
        {"SCOs!S", "55 59 . . 55 55 "},
        {"CSKs!cKk", "59 55 . . . 59 . 55 "},
        {"AsSAs", "55 55 55 . 55 "},
        {"ASOso", "55 . . . 55 "},
        {"KAka", "55 . . 55 "},
    };
    const std::map<char, std::pair<PhysicalKey, KeyCode>> keys = {
        {'S', {{5, 133}, 55}},
        {'O', {{9, 133}, 55}},
        {'A', {{PhysicalKey::kAnyKeyboard, 133}, 55}},
        {'K', {{PhysicalKey::kNoKeyboard, 133}, 55}},
        {'C', {{5, 37}, 59}},
        {'X', {{5, 37}, 56}}};
    for (const auto& [steps, expected] : rows) {
        HeldKeys held;
        std::string told;
        for (const char step : steps) {
            const auto& [key, code] = keys.at(static_cast<char>(step == '!' ? 'S' : step & ~0x20));
            std::vector<KeyCode> codes;
            if (step == '!')
                codes = held.keepOnly([](auto keycode) { return keycode == 37; });
            else if (const auto one = step < 'a' ? held.press(key, code) : held.release(key))
                codes.push_back(*one);
            for (const KeyCode each : codes)
                told += std::to_string(each) + ' ';
            told += codes.empty() ? ". " : "";
        }
        EXPECT_EQ(told, expected) << steps;
    }
}

TEST(ClickCounter, CountsPressesOfOneButtonSoonAndNear) {
    // Button, time, place and click state.
    using Press = std::tuple<std::uint32_t, std::uint32_t, Point, std::int64_t>;
    const Press first{1, 1000, {50, 50}, 1}, beforeTheWrap{1, 0xFFFFFFFF - 99, {}, 1};
    const std::vector<Press> rows[] = {
        {first, {1, 1400, {50, 50}, 2}},
        {first, {1, 1401, {50, 50}, 1}},
        {first, {1, 1100, {55, 45}, 2}},
        {first, {1, 1100, {55.5, 50}, 1}},
        {first, {1, 1100, {50, 44.5}, 1}},
        {beforeTheWrap, {1, 300, {}, 2}},
        {beforeTheWrap, {1, 301, {}, 1}},
        {first, first, {1, 1200, {50, 50}, 2}, {1, 1200, {51, 50}, 2}, {1, 1400, {50, 50}, 3}},
        {first, {3, 1100, {50, 50}, 1}, {1, 1200, {50, 50}, 1}, {1, 1300, {50, 50}, 2}},
    };
    for (const auto& presses : rows) {
        ClickCounter counter;
        for (const auto& [button, time, place, state] : presses)
            EXPECT_EQ(counter.press(button, time, place, {400, 5}), state) << button << ' ' << time;
    }
}

TEST(PassiveGrabs, CoverEveryStateThatWouldBeArmed) {
    constexpr std::uint32_t shift = 1, lock = 2, control = 4, option = 8, number = 16, super = 64;
    const std::tuple<std::size_t, KeyCode, std::uint32_t> keys[] = {
        {37, 59, control},      {38, key::a, 0},          {50, 56, shift},    {64, 58, option},
        {66, kNoKeyCode, lock}, {77, kNoKeyCode, number}, {105, 62, control}, {133, 55, super},
        {134, 54, super},       {206, 55, super}};
    KeyMap map;
    for (const auto& [keycode, code, modifier] : keys) {
        map.codes[keycode] = code;
        map.modifiers[keycode] = static_cast<std::uint8_t>(modifier);
    }
    using Grab = std::array<std::uint32_t, 3>; // kind, key or button, the modifiers that it needs
    const std::tuple<std::vector<KeyCode>, std::vector<Grab>, std::uint32_t> rows[] = {
        {{55, 59}, {{1, 37, super}, {1, 133, control}, {1, 206, control}}, super | control},
        {{59, 58, 56}, {{1, 37, 9}, {1, 50, 12}, {1, 64, 5}}, control | option | shift},
        {{54, 55}, {{1, 133, super}, {1, 134, super}, {1, 206, super}}, super},
        {{58, 58}, {{1, 64, 0}}, option},
        {{}, {}, 0},
    };
    for (auto [activation, expected, all] : rows) {
        expected.insert(expected.begin(), {1, 0, all});
        expected.insert(expected.end(), {{0, 1, all}, {0, 3, all}});
        std::vector<Grab> planned;
        for (const auto& [kind, detail, modifiers] : planPassiveGrabs(map, activation))
            planned.push_back({static_cast<std::uint32_t>(kind), detail, modifiers});
        EXPECT_EQ(planned, expected);
    }
    for (const KeyCode noModifier : {key::fn, key::a})
        EXPECT_TRUE(planPassiveGrabs(map, std::array{key::command, noModifier}).empty());
}

TEST(MonitorList, StandsChangesFromInsideAHandler) {
    MonitorList monitors;
    std::string heard;
    std::map<char, MonitorId> ids;
    const auto add = [&](char name, std::uint64_t mask, const std::function<void()>& then) {
        ids[name] = monitors.add(mask, [&heard, then, name](const Event&) {
            then();
            heard += name; // what a handler destroyed too early does not have any more
        });
    };
    const auto keys = maskOf(EventType::keyDown), drags = maskOf(EventType::leftMouseDragged);
    add('a', keys, [&] { monitors.remove(ids['a']); });
    add('b', keys, [&] { monitors.remove(ids['c']); });
    add('c', keys, [] {});
    add('d', keys | drags, [&] { add('c', keys, [] {}); });
    for (const auto type : {EventType::keyDown, EventType::leftMouseDragged, EventType::keyDown})
        monitors.deliver({.type = type});
    EXPECT_EQ(heard, "abd"
                     "d"
                     "bdc"); // two were added in between, one of them removed
    monitors.remove(ids['d']);
    EXPECT_TRUE(monitors.watches(EventType::keyDown));
    EXPECT_FALSE(monitors.watches(EventType::leftMouseDragged));
}

struct Property {
    bool bigEndian = false;
    std::vector<std::uint8_t> bytes{};

    Property& number(std::uint32_t value, std::size_t size = 4) {
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(static_cast<std::uint8_t>(value >> 8 * (bigEndian ? size - 1 - i : i)));
        return *this;
    }
    Property& start(std::uint32_t count) {
        return number(bigEndian, 1).number(0, 3).number(7).number(count);
    }
    Property& setting(std::uint32_t type, const std::string& name,
                      const std::vector<std::uint32_t>& values) {
        number(type, 1).number(0, 1).number(static_cast<std::uint32_t>(name.size()), 2);
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.resize((bytes.size() + 3) / 4 * 4);
        number(1);
        for (const auto value : values)
            number(value);
        return *this;
    }
};

TEST(ClickLimits, AreReadInBothByteOrdersUpToAnyEnd) {
    for (const bool bigEndian : {false, true}) {
        Property all{bigEndian};
        all.start(5).setting(1, "Net/ThemeName", {5, 1, 2}).setting(2, "Colour", {3, 4});
        const auto time = all.setting(0, "Net/DoubleClickTime", {250}).bytes.size();
        all.setting(0, "Gtk/EnableAnimations", {0}).setting(0, "Net/DoubleClickDistance", {9});
        for (auto size = all.bytes.size() + 1; size-- > 0;) {
            const std::vector<std::uint8_t> part(all.bytes.data(), all.bytes.data() + size);
            const double distance = size < all.bytes.size() ? 5 : 9;
            EXPECT_EQ(parseSettings(part).clicks,
                      (ClickLimits{size < time ? 400U : 250U, distance}));
        }
        EXPECT_FALSE(parseSettings(all.bytes).animations);
    }
}

TEST(ClickLimits, AreTheDefaultsWhereThePropertyIsNonsense) {
    const auto start = [](std::uint32_t count) { return Property{}.start(count); };
    Property rows[] = {start(0), // the setting below is one too many
                       start(2).setting(1, "Net/ThemeName", {0xFFFFFFFF}),
                       start(2).number(0xFFFF0000),
                       start(2).setting(3, "Net/DoubleClickDistance", {9}),
                       start(3)
                           .setting(1, "Net/DoubleClickTime", {4, 250})
                           .setting(0, "Net/DoubleClickDistance", {1001}),
                       Property{}.number(1).number(7).number(1)}; // of the other byte order
    for (auto& row : rows) {
        row.setting(0, "Net/DoubleClickTime", {&row == &rows[4] ? 10'001U : 250U});
        EXPECT_EQ(parseSettings(row.bytes), SharedSettings{}) << "row " << &row - rows;
    }
}

} // namespace
} // namespace klova::x11
