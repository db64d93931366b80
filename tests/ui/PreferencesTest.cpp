// The preferences: what each click does to the settings, the store, the menu and the controls.
#include "input/ActivationKeys.h"
#include "input/ShellState.h"
#include "settings/DataStorageManager.h"
#include "settings/LoginController.h"
#include "ui/KeyButton.h"
#include "ui/Offscreen.h"
#include "ui/PreferencesVC.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <QKeyEvent>

namespace klova::test {
namespace {

using Keys = std::vector<KeyCode>;

class PreferencesTest : public CoreTest {
protected:
    PreferencesTest() {
        application();
        applicationDelegate = &shell;
        dataStorageManager = &manager;
        loginItems = &sim;
        vc.view().show();
    }

    void appear() {
        vc.viewWillAppear();
        sim.takeLog();
    }
    void set(QAbstractButton& button, bool on) {
        if (button.isChecked() != on)
            setNextState(button);
    }
    std::string reopenStates() const {
        return std::to_string(stateOf(*vc.reopenButton)) +
               std::to_string(stateOf(*vc.reopenButtonTwo)) +
               std::to_string(stateOf(*vc.reopenButtonThree));
    }
    Layer& hintLayer() { return vc.onlyOneButtonLabel->layer(); }
    Log takeLog() { return std::exchange(shell.log, {}); }
    void press(QWidget& widget, int key) {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &down);
        QCoreApplication::sendEvent(&widget, &up);
    }

    NotingShell shell{sim};
    DataStorageManager manager{desktop};
    PreferencesVC vc;
};

TEST_F(PreferencesTest, anActivationKeyIsToggledByTheRules) {
    const QString note = "Note: Selecting only 1 Key suppresses certain Key Commands.";
    const QString normal = "Select at least one Activation-Key.";
    struct Row {
        Keys keys;
        double opacity; ///< of the hint before
        QAbstractButton* clicked;
        Keys keysAfter;
        double opacityAfter;
        QString hint; ///< empty: as it was
        bool wasOn;
        bool onAfter;
    } const rows[] = {
        {{55, 59}, 0, vc.cmdButton, {59}, 1, note, true, false},
        {{59}, 0, vc.ctrlButton, {59}, 1, normal, true, true},
        {{59}, 1, vc.ctrlButton, {59}, 1, normal, true, true},
        {{59}, 1, vc.altButton, {59, 58}, 0, {}, false, true},
        {{55, 59}, 1, vc.altButton, {55, 59, 58}, 1, {}, false, true},
        {{55, 58, 59}, 0, vc.altButton, {55, 59}, 0, normal, true, false},
        {{59, 59}, 0, vc.ctrlButton, {59}, 1, note, true, false},
        {{58, 59, 58}, 0, vc.altButton, {59, 58}, 0, normal, true, false},
        {{63, 54}, 0, vc.cmdButton, {63, 54}, 1, note, true, false}, // not in the list
        {{55}, 0, vc.cmdButton, {55}, 0, {}, false, true},           // in the list already
        {{}, 0, vc.cmdButton, {55}, 0, {}, false, true},
        {{}, 0, vc.cmdButton, {}, 1, normal, true, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        activationKeys = row.keys;
        appear();
        vc.onlyOneButtonLabel->setAttributedStringValue({"before", 12, {}, 0, 0, {}});
        hintLayer().setOpacity(row.opacity);
        set(*row.clicked, row.wasOn);
        row.clicked->click();
        EXPECT_EQ(activationKeys, row.keysAfter);
        EXPECT_EQ(row.clicked->isChecked(), row.onAfter);
        EXPECT_EQ(hintLayer().opacity(), row.opacityAfter);
        EXPECT_EQ(vc.onlyOneButtonLabel->attributedStringValue().string,
                  row.hint.isEmpty() ? "before" : row.hint);
        EXPECT_EQ(takeLog(), (Log{"store activationKeys", "activation label", "shortcut labels"}));
    }
}

TEST_F(PreferencesTest, theHintHighlightsItsWordAndFades) {
    activationKeys = {55, 59};
    appear();
    vc.cmdButton->click();
    const auto* effect =
        static_cast<QGraphicsOpacityEffect*>(vc.onlyOneButtonLabel->graphicsEffect());
    EXPECT_EQ(hintLayer().opacity(), 1);
    EXPECT_LT(effect->opacity(), 0.5);
    const auto expect = [this](double size, int location, int length) {
        const AttributedString& hint = vc.onlyOneButtonLabel->attributedStringValue();
        EXPECT_EQ(std::tuple(hint.fontSize, hint.location, hint.length),
                  std::tuple(size, location, length));
        EXPECT_EQ(hint.foreground, QColor(128, 128, 128));
        EXPECT_EQ(hint.highlight, QColor(255, 118, 118));
    };
    expect(8, 0, 4);
    vc.ctrlButton->click();
    expect(12, 16, 3);
    for (QDeadlineTimer deadline(5000); effect->isEnabled() && !deadline.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(effect->opacity(), 1);
    vc.altButton->click();
    EXPECT_EQ(hintLayer().opacity(), 0);
    EXPECT_GT(effect->opacity(), 0.5);
    for (QDeadlineTimer deadline(5000); !vc.onlyOneButtonLabel->isHidden();) {
        ASSERT_FALSE(deadline.hasExpired());
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
}

TEST_F(PreferencesTest, onlyTheChosenReopenKeyIsOn) {
    for (const auto& [setting, states] :
         {std::pair(14, "010"), {12, "100"}, {8, "001"}, {0, "001"}, {99, "001"}}) {
        PreferencesVC fresh;
        fresh.view();
        deminimizeButton = setting;
        fresh.viewWillAppear();
        for (auto* button : {&vc.reopenButton, &vc.reopenButtonTwo, &vc.reopenButtonThree})
            set(**button, true); // as loaded
        appear();
        EXPECT_EQ(reopenStates(), states) << setting;
        EXPECT_EQ(stateOf(*fresh.reopenButtonThree), stateOf(*vc.reopenButtonThree)) << setting;
    }
    struct Row {
        QAbstractButton* clicked;
        std::int64_t setting;
        const char* states;
    } const rows[] = {{vc.reopenButton, 12, "100"},
                      {vc.reopenButtonTwo, 14, "010"},
                      {vc.reopenButtonTwo, 14, "000"},
                      {vc.reopenButtonTwo, 14, "010"},
                      {vc.reopenButtonThree, 8, "001"}};
    for (const auto& [clicked, setting, states] : rows) {
        clicked->click();
        EXPECT_EQ(deminimizeButton, setting) << &clicked - &rows[0].clicked;
        EXPECT_EQ(reopenStates(), states);
        EXPECT_EQ(takeLog(),
                  (Log{"store deminimizeButton", "activation label", "shortcut labels"}));
    }
}

TEST_F(PreferencesTest, gesturesAndTheLoginItemFollowTheirButtons) {
    centeringEnabled = false;
    appear();
    EXPECT_TRUE(vc.maximizeButton->isChecked() && !vc.centerButton->isChecked());
    vc.maximizeButton->click();
    vc.centerButton->click();
    EXPECT_TRUE(!maximizingEnabled && centeringEnabled);
    takeLog();

    const auto launching = [this] {
        return std::tuple(vc.launchButton->icon().name().toStdString(),
                          vc.launchButton->isChecked(), manager.isLaunchingOnStartup(),
                          sim.items.size());
    };
    EXPECT_EQ(launching(), std::tuple("launchAtStartOff", false, false, 0));
    vc.launchButton->click();
    EXPECT_EQ(launching(), std::tuple("launchAtStartOn", true, true, 1));
    appear();
    EXPECT_EQ(launching(), std::tuple("launchAtStartOn", false, true, 1)) << "shown again";
    vc.launchButton->click();
    EXPECT_EQ(launching(), std::tuple("launchAtStartOn", true, true, 2));
    vc.launchButton->click();
    EXPECT_EQ(launching(), std::tuple("launchAtStartOff", false, false, 0));
    EXPECT_EQ(takeLog(), Log{}) << "no label shows it";
}

TEST_F(PreferencesTest, areReachedByKeyboardAndScreenReader) {
    activationKeys = {55, 59};
    deminimizeButton = 12;
    appear();
    press(*vc.altButton, Qt::Key_Return);
    press(*vc.cmdButton, Qt::Key_Space);
    EXPECT_EQ(activationKeys, (Keys{59, 58}));
    press(*vc.reopenButton, Qt::Key_Right);
    EXPECT_EQ(reopenStates(), "010");
    press(*vc.reopenButton, Qt::Key_Up);
    EXPECT_EQ(reopenStates(), "001");
    auto* cmd = QAccessible::queryAccessibleInterface(vc.cmdButton);
    cmd->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(activationKeys, (Keys{59, 58, 55}));
    auto* reopen = QAccessible::queryAccessibleInterface(vc.reopenButton);
    EXPECT_FALSE(reopen->state().checked);
    reopen->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(reopen->state().checked);
    EXPECT_EQ(reopenStates(), "100");
}

TEST_F(PreferencesTest, stopWhereSomethingIsMissing) {
    applicationDelegate = &sim;
    EXPECT_NE(fatalMessage([&] { vc.maximizeButtonClicked(*vc.maximizeButton); }), "");
    applicationDelegate = nullptr;
    EXPECT_NE(fatalMessage([&] { vc.ctrlButtonClicked(*vc.ctrlButton); }), "");
    applicationDelegate = &shell;
    dataStorageManager = nullptr;
    EXPECT_NE(fatalMessage([&] { vc.launchButtonClicked(*vc.launchButton); }), "");
    dataStorageManager = &manager;
    delete vc.reopenButtonTwo;
    EXPECT_NE(fatalMessage([&] { vc.reopenButtonClicked(*vc.reopenButton); }), "");
}

} // namespace
} // namespace klova::test
