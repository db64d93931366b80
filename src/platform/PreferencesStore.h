// The per-user preferences: typed values by name, kept across runs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace klova {

/// An element of a stored array. `std::monostate` stands for a value of any other kind.
using StoredValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

class PreferencesStore {
public:
    virtual ~PreferencesStore() = default;

    /// Writes return once the value is stored; where that fails the value holds until the end of
    /// the program and the failure is said on standard error.
    virtual void setBool(bool value, std::string_view key) = 0;
    virtual void setInteger(std::int64_t value, std::string_view key) = 0;
    virtual void setArray(std::span<const StoredValue> values, std::string_view key) = 0;

    virtual bool boolForKey(std::string_view key) = 0;            ///< not a boolean: false
    virtual std::int64_t integerForKey(std::string_view key) = 0; ///< not a number: 0

    /// Absent where nothing or no array is stored.
    virtual std::optional<std::vector<StoredValue>> arrayForKey(std::string_view key) = 0;

    /// Where a value is kept, for messages about it.
    virtual std::string location() const = 0;
};

} // namespace klova
