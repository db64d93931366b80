#include "platform/freedesktop/JsonPreferencesStore.h"

#include "desktop/Files.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace klova;
using rig::readFile, rig::writeFile;
namespace fs = std::filesystem;

namespace {

using Values = std::optional<std::vector<StoredValue>>;

class JsonPreferencesStoreTest : public testing::Test {
protected:
    auto filesInFolder() const {
        return std::distance(fs::directory_iterator(file.parent_path()), fs::directory_iterator());
    }

    const rig::TemporaryDirectory folder;
    const fs::path file = folder.path() / "klova" / "preferences.json";
    const fs::path draft = file.native() + ".new";
};

TEST_F(JsonPreferencesStoreTest, readsEachKindAndCoercesNone) {
    const auto largest = std::numeric_limits<std::int64_t>::max();
    const std::tuple<std::string, bool, std::int64_t, Values> rows[] = {
        {"true", true, 0, {}},
        {"\"true\"", false, 0, {}},
        {"1", false, 1, {}},
        {"-3.9", false, -3, {}},
        {"9223372036854775807", false, largest, {}},
        {"9223372036854775808", false, 0, {}},
        {"1e300", false, 0, {}},
        {"[]", false, 0, Values{std::in_place}},
        {"[55, \"x\", true, null, [1]]", false, 0, Values{{55L, "x", true, {}, {}}}},
        {"[-1, 5.5, 18446744073709551615, 1e20]", false, 0, Values{{-1L, 5.5, 0x1p64, 1e20}}}};
    for (const auto& [json, boolean, integer, array] : rows) {
        writeFile(file, "{\"k\": " + json + "}");
        JsonPreferencesStore store(file);
        EXPECT_EQ(store.boolForKey("k"), boolean) << json;
        EXPECT_EQ(store.integerForKey("k"), integer) << json;
        EXPECT_EQ(store.arrayForKey("k"), array) << json;
        EXPECT_FALSE(store.boolForKey("other") || store.arrayForKey("other")) << json;
    }
    EXPECT_EQ(filesInFolder(), 1) << "none of these is a broken file";
}

TEST_F(JsonPreferencesStoreTest, savesWithoutLosingWhatItDoesNotKnow) {
    JsonPreferencesStore(file).setBool(true, "k");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms(0700));

    writeFile(file, R"({"theirs": {"deep": 1.5}, "k": 8})");
    fs::permissions(file, fs::perms(0640));
    writeFile(draft, std::string(5000, '}')); // left by a save that was killed
    JsonPreferencesStore store(file);
    store.setArray(std::vector<StoredValue>{55L}, "k");
    EXPECT_EQ(readFile(file), "{\n    \"theirs\": {\n        \"deep\": 1.5\n    },\n"
                              "    \"k\": [\n        55\n    ]\n}\n");
    fs::last_write_time(file, {});
    store.setArray(std::vector<StoredValue>{55L}, "k");
    EXPECT_EQ(fs::last_write_time(file), fs::file_time_type{}) << "nothing differs, so no write";
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_EQ(filesInFolder(), 1);

    fs::remove(file);
    fs::create_symlink("../elsewhere.json", file);
    JsonPreferencesStore(file).setBool(true, "k");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(JsonPreferencesStore(folder.path() / "elsewhere.json").boolForKey("k"));
}

TEST_F(JsonPreferencesStoreTest, keepsEachBrokenFileAndStartsAfresh) {
    const std::string deep(200'000, '[');
    std::string kept = file.native() + ".broken";
    const std::string texts[] = {"",
                                 R"({"k": tr)",
                                 "[true]",
                                 deep,
                                 "{\"k\": " + deep + std::string(deep.size(), ']') + "}",
                                 std::string(2'000'000, ' ')};
    for (const std::string& text : texts) {
        writeFile(file, text);
        testing::internal::CaptureStderr();
        JsonPreferencesStore store(file);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        EXPECT_EQ(readFile(kept), text);
        store.setBool(true, "k");
        kept = file.native() + ".broken." + std::to_string(filesInFolder() - 1);
    }
    fs::remove(file);
    fs::create_directories(file / "inside");
    JsonPreferencesStore(file).setBool(true, "k");
    EXPECT_TRUE(fs::exists(kept + "/inside"));
    EXPECT_TRUE(JsonPreferencesStore(file).boolForKey("k"));
}

TEST_F(JsonPreferencesStoreTest, aFailedSaveIsSaidOnceAndMadeUpForLater) {
    writeFile(file, "{\"k\": 1}");
    fs::create_directories(draft);
    JsonPreferencesStore store(file);
    testing::internal::CaptureStderr();
    store.setInteger(2, "k");
    store.setInteger(3, "k");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(store.integerForKey("k"), 3);
    EXPECT_EQ(readFile(file), "{\"k\": 1}");
    fs::remove(draft);
    store.setInteger(3, "k");
    EXPECT_EQ(JsonPreferencesStore(file).integerForKey("k"), 3);
}

TEST_F(JsonPreferencesStoreTest, aKillAtAnyMomentLeavesTheOldOrTheNewFile) {
    std::vector<StoredValue> values(2000, 0L);
    JsonPreferencesStore(file).setArray(values, "k");
    for (useconds_t round = 0; round < 40; ++round) {
        if (const pid_t child = ::fork(); child != 0) {
            ::waitpid(child, nullptr, 0);
            const auto found = JsonPreferencesStore(file).arrayForKey("k");
            ASSERT_TRUE(found && found->size() == 2000 && found->front() == found->back());
            ASSERT_LE(filesInFolder(), 2);
            continue;
        }
        ::ualarm(1000 + round * 371, 0);
        for (JsonPreferencesStore store(file);; store.setArray(values, "k"))
            values.assign(2000, values[0] == StoredValue(0L) ? 1L : 0L);
    }
}

TEST_F(JsonPreferencesStoreTest, aRelativeConfigurationFolderIsIgnored) {
    ::setenv("HOME", "/home/someone", 1);
    for (const char* configured : {"", "relative/path"}) {
        ::setenv("XDG_CONFIG_HOME", configured, 1);
        EXPECT_EQ(configurationFolder(), "/home/someone/.config/klova");
    }
    ::setenv("XDG_CONFIG_HOME", "/etc/xdg", 1);
    EXPECT_EQ(configurationFolder(), "/etc/xdg/klova");
}

} // namespace
