#include "app/MenuTitles.h"

#include "input/ActivationKeys.h"
#include "input/ProcessState.h"
#include "settings/DataStorageManager.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace klova;

class MenuTitlesTest : public testing::Test {
protected:
    void SetUp() override { resetProcessState(); }
    void TearDown() override { resetProcessState(); }
};

TEST_F(MenuTitlesTest, eachTitleNamesTheChosenKeys) {
    struct Row {
        std::vector<KeyCode> keys;
        const char* activationKeys;
        const char* dragging;
        const char* quit;
    };
    const std::vector<Row> rows = {
        {{55, 59},
         "Activation Keys: ⌘Ctrl",
         "Dragging: ⌘Ctrl + Left Mouse",
         "Quit KLOVA: ⌘Ctrl + T"},
        {{59, 55},
         "Activation Keys: Ctrl⌘",
         "Dragging: Ctrl⌘ + Left Mouse",
         "Quit KLOVA: Ctrl⌘ + T"},
        {{58}, "Activation Keys: ⌥", "Dragging: ⌥ + Left Mouse", "Quit KLOVA: ⌥ + T"},
        {{54}, "Activation Keys: ", "Dragging:  + Left Mouse", "Quit KLOVA:  + T"},
        {{}, "Activation Keys: ", "Dragging:  + Left Mouse", "Quit KLOVA:  + T"},
    };
    for (const Row& row : rows) {
        activationKeys = row.keys;
        const MenuTitles titles = menuTitles();
        EXPECT_EQ(titles.activationKeys, row.activationKeys);
        EXPECT_EQ(titles.dragging, row.dragging);
        EXPECT_EQ(titles.quit, row.quit);
    }
}

TEST_F(MenuTitlesTest, theReopenLetterAndTheHalvesOfTheDoubleClickFollowTheSettings) {
    struct Row {
        KeyCode reopen;
        bool maximizing, centering;
        const char* letter;
        const char* title;
    };
    const std::vector<Row> rows = {
        {8, true, true, "C", "Maximizing/Centering:  + Left Doubleclick"},
        {12, true, false, "Q", "Maximizing:  + Left Doubleclick"},
        {14, false, true, "E", "Centering:  + Left Doubleclick"},
        {0, false, false, "C", "Maximizing/Centering:  + Left Doubleclick"},
    };
    for (const Row& row : rows) {
        deminimizeButton = row.reopen;
        maximizingEnabled = row.maximizing;
        centeringEnabled = row.centering;
        EXPECT_EQ(menuTitles().reopen, QString("Reopen minimized Window:  + ") + row.letter);
        EXPECT_EQ(menuTitles().maximizing, row.title);
    }
}

} // namespace
