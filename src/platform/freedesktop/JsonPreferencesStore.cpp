#include "platform/freedesktop/JsonPreferencesStore.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <utility>

namespace klova {
namespace {

using Json = nlohmann::ordered_json;

/// Values nested deeper are refused: writing them again would recurse as deep.
constexpr int kDeepest = 100;

std::optional<std::int64_t> integerOf(double real) {
    constexpr double limit = 0x1p63;
    if (!(real >= -limit && real < limit))
        return std::nullopt;
    return static_cast<std::int64_t>(std::trunc(real));
}

StoredValue storedValueOf(const Json& json) {
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_string())
        return json.get<std::string>();
    if (json.is_number_float())
        return json.get<double>();
    if (json.is_number_unsigned() &&
        json.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
        return static_cast<double>(json.get<std::uint64_t>());
    if (json.is_number())
        return json.get<std::int64_t>();
    return std::monostate();
}

Json jsonOf(const StoredValue& stored) {
    return std::visit(
        [](const auto& value) {
            if constexpr (std::is_same_v<decltype(value), const std::monostate&>)
                return Json();
            else
                return Json(value);
        },
        stored);
}

/// Null unless the text is one JSON object of reasonable depth.
std::optional<Json> parseObject(const std::string& text) {
    bool tooDeep = false;
    const auto keep = [&tooDeep](int depth, Json::parse_event_t, const Json&) {
        tooDeep = tooDeep || depth > kDeepest;
        return !tooDeep;
    };
    Json json = Json::parse(text, keep, false);
    if (tooDeep || !json.is_object())
        return std::nullopt;
    return json;
}

} // namespace

struct JsonPreferencesStore::Document {
    Json values = Json::object();

    const Json& at(std::string_view key) const {
        static const Json none;
        const auto found = values.find(key);
        return found != values.end() ? *found : none;
    }

    /// Returns whether that changes anything.
    bool set(std::string_view key, const Json& value) {
        if (values.contains(key) && at(key) == value)
            return false;
        values[std::string(key)] = value;
        return true;
    }
};

JsonPreferencesStore::JsonPreferencesStore(const std::filesystem::path& file, Complaint complain)
    : file_(file), complain_(std::move(complain)), document_(std::make_unique<Document>()) {
    load();
}

JsonPreferencesStore::~JsonPreferencesStore() = default;

void JsonPreferencesStore::load() {
    std::string text;
    if (const auto error = file_.read(text)) {
        if (error != std::errc::no_such_file_or_directory)
            keepBrokenFile("cannot be read (" + error.message() + ")");
        return;
    }
    if (auto values = parseObject(text))
        document_->values = std::move(*values);
    else
        keepBrokenFile("do not hold one JSON object");
}

void JsonPreferencesStore::keepBrokenFile(const std::string& reason) {
    std::filesystem::path kept;
    const auto error = file_.setAside(kept);
    memoryOnly_ = static_cast<bool>(error);
    const std::string settings = "the settings in " + location() + " " + reason;
    if (error)
        complain_(settings + " and cannot be moved away (" + error.message() +
                  "), so that this run starts afresh and saves nothing.");
    else
        complain_(settings + ", so that Klova starts afresh and keeps them as " + kept.native() +
                  ".");
}

bool JsonPreferencesStore::boolForKey(std::string_view key) {
    const auto value = storedValueOf(document_->at(key));
    const bool* boolean = std::get_if<bool>(&value);
    return boolean != nullptr && *boolean;
}

std::int64_t JsonPreferencesStore::integerForKey(std::string_view key) {
    const auto value = storedValueOf(document_->at(key));
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return *integer;
    const auto* real = std::get_if<double>(&value);
    return real != nullptr ? integerOf(*real).value_or(0) : 0;
}

std::optional<std::vector<StoredValue>> JsonPreferencesStore::arrayForKey(std::string_view key) {
    const Json& json = document_->at(key);
    if (!json.is_array())
        return std::nullopt;
    std::vector<StoredValue> values;
    values.reserve(json.size());
    for (const Json& element : json)
        values.push_back(storedValueOf(element));
    return values;
}

void JsonPreferencesStore::setBool(bool value, std::string_view key) {
    if (document_->set(key, value) || unsaved_)
        save();
}

void JsonPreferencesStore::setInteger(std::int64_t value, std::string_view key) {
    if (document_->set(key, value) || unsaved_)
        save();
}

void JsonPreferencesStore::setArray(std::span<const StoredValue> values, std::string_view key) {
    Json array = Json::array();
    for (const StoredValue& value : values)
        array.push_back(jsonOf(value));
    if (document_->set(key, array) || unsaved_)
        save();
}

void JsonPreferencesStore::save() {
    if (memoryOnly_)
        return;
    const auto text = document_->values.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
    const auto error = file_.replace(text);
    if (error && !unsaved_)
        complain_("the settings cannot be saved to " + location() + " (" + error.message() +
                  ") and hold until Klova ends.");
    unsaved_ = static_cast<bool>(error);
}

} // namespace klova
