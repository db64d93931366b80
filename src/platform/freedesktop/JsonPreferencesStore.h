// The preferences as one JSON object in a file of the user's.
#pragma once

#include "platform/Diagnostics.h"
#include "platform/PreferencesStore.h"
#include "platform/freedesktop/PreferencesFile.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace klova {

class JsonPreferencesStore final : public PreferencesStore {
public:
    /// Takes a sentence about settings that could not be read or saved, which begins small.
    using Complaint = std::function<void(const std::string& sentence)>;

    /// Reads the file; where there is none the store is empty. A file that cannot be read as one
    /// JSON object is kept under another name beside it, with a complaint, and the store is empty
    /// too.
    explicit JsonPreferencesStore(const std::filesystem::path& file = configurationFolder() /
                                                                      "preferences.json",
                                  Complaint complain = errorLine);
    ~JsonPreferencesStore() override;

    void setBool(bool value, std::string_view key) override;
    void setInteger(std::int64_t value, std::string_view key) override;
    void setArray(std::span<const StoredValue> values, std::string_view key) override;

    bool boolForKey(std::string_view key) override;

    /// A real is cut off towards zero; a number beyond 64 bits is none.
    std::int64_t integerForKey(std::string_view key) override;

    /// Integers beyond 64 bits arrive as reals.
    std::optional<std::vector<StoredValue>> arrayForKey(std::string_view key) override;

    std::string location() const override { return file_.path().native(); }

private:
    struct Document;

    void load();
    void keepBrokenFile(const std::string& reason);
    void save();

    PreferencesFile file_;
    Complaint complain_;
    std::unique_ptr<Document> document_;
    bool memoryOnly_ = false; ///< a broken file is in the way and must not be overwritten
    bool unsaved_ = false;
};

} // namespace klova
