#include "settings/DataStorageManager.h"

#include "input/ActivationKeys.h"
#include "platform/FatalError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace klova {
namespace {

constexpr std::string_view kNotFirstTime = "isNotFirstTime";
constexpr std::string_view kActivationKeys = "activationKeys";
constexpr std::string_view kLaunching = "LoadsOnStartup";
constexpr std::string_view kMaximizing = "maximizingEnabled";
constexpr std::string_view kCentering = "centeringEnabled";
constexpr std::string_view kDeminimizeButton = "deminimizeButton";

bool isNumber(const StoredValue& value) {
    const auto* real = std::get_if<double>(&value);
    return std::holds_alternative<std::int64_t>(value) || (real != nullptr && std::isfinite(*real));
}

template <typename Number> bool isKeyCode(Number number) {
    return number >= 0 && number <= std::numeric_limits<KeyCode>::max();
}

template <typename Number> std::string textOf(Number number) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

} // namespace

void DataStorageManager::setNotFirstTime(bool notFirstTime) {
    defaults_.setBool(notFirstTime, kNotFirstTime);
}

bool DataStorageManager::isFirstTimeAndManage() {
    const bool notFirstTime = defaults_.boolForKey(kNotFirstTime);
    setNotFirstTime(true);
    return !notFirstTime;
}

void DataStorageManager::saveKeys() {
    const std::vector<StoredValue> codes(activationKeys.begin(), activationKeys.end());
    defaults_.setArray(codes, kActivationKeys);
    static_cast<void>(defaults_.arrayForKey(kActivationKeys)); // read back, without effect
}

std::vector<KeyCode> DataStorageManager::readActivationKeys() {
    const auto stored = defaults_.arrayForKey(kActivationKeys);
    if (!stored || !std::ranges::all_of(*stored, isNumber))
        return {key::control, key::command};
    std::vector<KeyCode> codes;
    for (const StoredValue& number : *stored)
        codes.push_back(keyCodeOf(number));
    return codes;
}

KeyCode DataStorageManager::keyCodeOf(const StoredValue& number) const {
    const auto convert = [this](auto value) {
        if (!isKeyCode(value))
            fatalError(defaults_.location() + ": " + std::string(kActivationKeys) + " holds " +
                       textOf(value) + ", which is no key code");
        return static_cast<KeyCode>(value);
    };
    const auto* real = std::get_if<double>(&number);
    return real != nullptr ? convert(*real) : convert(std::get<std::int64_t>(number));
}

void DataStorageManager::writeToGlobalActivationKeys() { activationKeys = readActivationKeys(); }

void DataStorageManager::saveStartupSettings(bool launching) {
    defaults_.setBool(launching, kLaunching);
}

bool DataStorageManager::isLaunchingOnStartup() { return defaults_.boolForKey(kLaunching); }

void DataStorageManager::saveMaxCenterSettings() {
    defaults_.setBool(maximizingEnabled, kMaximizing);
    defaults_.setBool(centeringEnabled, kCentering);
}

void DataStorageManager::writeToMaxCenterSettings() {
    maximizingEnabled = defaults_.boolForKey(kMaximizing);
    centeringEnabled = defaults_.boolForKey(kCentering);
}

void DataStorageManager::saveDeminimizeButton() {
    defaults_.setInteger(deminimizeButton, kDeminimizeButton);
}

void DataStorageManager::writeToDeminimizeButton() {
    deminimizeButton = defaults_.integerForKey(kDeminimizeButton);
}

} // namespace klova
