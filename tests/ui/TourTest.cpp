// The welcome tour: what it shows is what the program does, and its pages lead to the end.
#include "input/ActivationKeys.h"
#include "input/EventTapDispatcher.h"
#include "input/KeyInputController.h"
#include "input/ShellState.h"
#include "platform/Panels.h"
#include "settings/DataStorageManager.h"
#include "ui/GestureView.h"
#include "ui/Offscreen.h"
#include "ui/WelcomeFourVc.h"
#include "ui/WelcomeOneVc.h"
#include "ui/WelcomeThreeVc.h"
#include "ui/WelcomeTwoVc.h"
#include "ui/WelcomeVC.h"
#include "ui/gestures/TourGestures.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <cmath>

namespace klova::test {
namespace {

const Gesture* const kTour[] = {&kHoldingKeys, &kMovingWindow, &kSnappingWindow,
                                &kMinimizingWindow};

class TourGestures : public CoreTest {
protected:
    TourGestures() {
        statusItem = &sim;
        activationKeys = {key::command, key::control};
        sharedSwipeManager = controller.swipeManager();
    }

    /// Does to the desktop what the gesture's hands do between two of its beats.
    void perform(const Beat& before, const Beat& now) {
        if (now.held != before.held)
            for (const KeyCode code : activationKeys) {
                const bool last = now.held == 0 && heldModifierKeys.size() == 1;
                sim.send({EventType::flagsChanged, code, 0, last ? kNoModifierDown : 0});
            }
        for (const auto& [control, code, down, up] : kControls) {
            if ((now.pressed & ~before.pressed & control) != 0)
                tap(down, code);
            if ((~now.pressed & before.pressed & control) != 0)
                tap(up, code);
        }
        for (const Point& point : {before.pointer, now.pointer}) {
            sim.pointer = {point.x, kDrawnScreen.size.height - point.y};
            if ((now.pressed & kLeftButton) != 0 && now.pointer != before.pointer)
                sim.send({EventType::leftMouseDragged});
        }
        sinceClick += now.seconds;
    }

    void tap(EventType type, KeyCode code) {
        if (type == EventType::leftMouseDown) {
            clicks = sinceClick < 0.4 ? clicks + 1 : 1;
            sinceClick = 0;
        }
        dispatcher.tapCallback(type, {type, code, clicks});
    }

    template <typename Value> Value read(std::string_view attribute) const {
        return std::get<Value>(std::get<AXValue>(*window->attributes[attribute].value));
    }
    Frame frame() const { return {read<Point>(ax::position), read<Size>(ax::size)}; }
    bool minimized() const {
        const auto& value = window->attributes[ax::minimized].value;
        return value && std::get<bool>(*value);
    }

    static constexpr std::tuple<unsigned, KeyCode, EventType, EventType> kControls[] = {
        {kLeftArrow, key::leftArrow, EventType::keyDown, EventType::keyUp},
        {kUpArrow, key::upArrow, EventType::keyDown, EventType::keyUp},
        {kRightArrow, key::rightArrow, EventType::keyDown, EventType::keyUp},
        {kDownArrow, key::downArrow, EventType::keyDown, EventType::keyUp},
        {kReopenKey, key::c, EventType::keyDown, EventType::keyUp},
        {kLeftButton, 0, EventType::leftMouseDown, EventType::leftMouseUp},
        {kRightButton, 0, EventType::rightMouseDown, EventType::rightMouseUp}};

    KeyInputController controller{desktop};
    EventTapDispatcher dispatcher{desktop};
    std::int64_t clicks = 0;
    double sinceClick = 10; ///< seconds
};

TEST_F(TourGestures, endEachBeatWhereTheProgramPutsTheWindow) {
    for (const Gesture* gesture : kTour) {
        const Beat* before = &gesture->beats.front();
        window = SimulatedDesktop::window("w", 7, before->window);
        sim.focus(window);
        for (const Beat& beat : gesture->beats) {
            perform(*before, beat);
            before = &beat;
            const auto what = [&] { return beat.caption + std::to_string(before->pressed); };
            EXPECT_EQ(frame(), beat.window) << what();
            EXPECT_EQ(minimized(), beat.minimized) << what();
        }
        EXPECT_FALSE(activationComplete);
        EXPECT_TRUE(keysDown.empty()) << "the arrows come up first";
    }
}

TEST(TourPictures, moveWithoutJumpsAndWithThePointerThatDrags) {
    const auto grip = [](const Picture& picture) {
        return picture.pointer.x - minX(picture.window) +
               3 * (picture.pointer.y - minY(picture.window));
    };
    for (const Gesture* gesture : kTour) {
        Picture last = pictureAt(*gesture, 0);
        for (int time = 0; time < 2000 * duration(*gesture); time += 5) {
            const Picture picture = pictureAt(*gesture, time / 1000.0);
            const double step = std::hypot(minX(picture.window) - minX(last.window),
                                           maxY(picture.window) - maxY(last.window));
            EXPECT_TRUE(step < 25 || picture.curtain < 0.01) << time;
            EXPECT_LT(std::abs(picture.held - last.held), 0.02) << time;
            const bool dragged = picture.pointer != last.pointer && picture.light(kLeftButton) == 1;
            EXPECT_NEAR(dragged ? grip(picture) - grip(last) : 0, 0, 1e-6) << time;
            last = picture;
        }
    }
}

TEST(TourKeycaps, areThePersonsOwn) {
    const std::tuple<std::vector<KeyCode>, std::int64_t, const char*, const char*> rows[] = {
        {{55, 59}, 8, "Super + Ctrl", "C"},
        {{59, 58, 59, 54}, 12, "Ctrl + Alt", "Q"},
        {{63, 56}, 14, "fn + Shift", "E"},
        {{54}, 0, "the activation keys", "C"}};
    for (const auto& [keys, reopen, text, letter] : rows) {
        EXPECT_EQ(spoken(keycapsOf(keys, reopen)).toStdString(), text);
        EXPECT_EQ(keycapsOf(keys, reopen).reopen.toStdString(), letter);
    }
    EXPECT_EQ(keycapsOf(std::vector<KeyCode>{58}, 8).activation.at(0).symbol, "⌥");
}

struct StillDesktop final : Panels {
    bool composited() const override { return true; }
    bool animationsEnabled() const override { return false; }
    void setFrame(Window, const PanelFrame&) override {}
    void activate(Window) override {}
    void setCompositedChanged(std::function<void()>) override {}
};

class WelcomeTest : public CoreTest {
protected:
    WelcomeTest() {
        application().setFont(QFont("sans", 10));
        applicationDelegate = &shell;
        activationKeys = {key::control, key::option};
        tour.view().show();
    }
    ~WelcomeTest() override { panels = nullptr; }

    /// The page on show once every fade has ended.
    QWidget* page() { return page(tour); }
    static QWidget* page(WelcomeVC& tour) {
        const auto shown = [&tour] {
            return tour.containerViewForPages->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        };
        for (QDeadlineTimer deadline(5000); !deadline.hasExpired();) {
            const auto* effect = tour.containerViewForPages->graphicsEffect();
            if (shown() == QList<QWidget*>{&tour.currentVc->view()} && !effect->isEnabled())
                return shown().front();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        ADD_FAILURE() << shown().size() << " pages are on show";
        return nullptr;
    }
    GestureView* picture() {
        return dynamic_cast<GestureView*>(page()->findChildren<QWidget*>()[1]);
    }

    NotingShell shell{sim};
    WelcomeVC tour;
};

TEST_F(WelcomeTest, leadsThroughItsPagesToTheStartButton) {
    EXPECT_EQ(tour.currentPage, 1);
    EXPECT_NE(dynamic_cast<WelcomeOneVc*>(tour.currentVc.get()), nullptr);
    page();
    tour.nextButton->click();
    EXPECT_NE(dynamic_cast<WelcomeTwoVc*>(tour.currentVc.get()), nullptr);
    tour.nextButton->click(); // while the first page is fading out
    EXPECT_NE(dynamic_cast<WelcomeThreeVc*>(tour.currentVc.get()), nullptr);
    EXPECT_TRUE(tour.nextButton->icon().isNull());
    page();
    tour.nextButton->click();
    EXPECT_NE(dynamic_cast<WelcomeFourVc*>(tour.currentVc.get()), nullptr);
    EXPECT_FALSE(tour.nextButton->icon().isNull());

    panelOpen = true;
    tour.nextButton->click();
    EXPECT_EQ(shell.log, (Log{"menu on", "tour closed"}));
    EXPECT_FALSE(panelOpen);
    EXPECT_EQ(tour.currentPage, 4);
    EXPECT_EQ(page(), &tour.currentVc->view());
    for (const auto& [from, to] : {std::pair(4, -1), {-1, 1}, {5, 1}, {0, 1}}) {
        tour.currentPage = from;
        tour.nextButtonClicked();
        EXPECT_EQ(tour.currentPage, to) << from;
        EXPECT_NE(dynamic_cast<WelcomeFourVc*>(tour.currentVc.get()), nullptr) << from;
    }
    EXPECT_NE(fatalMessage([&] { tour.storyb.instantiate<WelcomeTwoVc>("WelcomeTwoVc"); }), "");
    EXPECT_NE(fatalMessage([&] { tour.storyb.instantiate<WelcomeTwoVc>("welcomeOneVc"); }), "");
}

TEST_F(WelcomeTest, playsOnlyOnShowAndOnlyWhereMotionIsWelcome) {
    GestureView* view = picture();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->playing());
    tour.view().hide();
    EXPECT_FALSE(view->playing());
    const QImage moving = view->grab().toImage();
    StillDesktop still;
    panels = &still;
    tour.view().show();
    EXPECT_FALSE(view->playing());
    EXPECT_NE(view->grab().toImage(), moving);
    auto* accessible = QAccessible::queryAccessibleInterface(view);
    EXPECT_EQ(accessible->role(), QAccessible::Graphic);
    EXPECT_TRUE(accessible->text(QAccessible::Description).startsWith("Ctrl + Alt "));
    tour.nextButton->click(); // and the tour goes in the middle of a fade
}

TEST_F(WelcomeTest, hasRoomForItsPicturesAndTextsAlsoWhereTheyAreLongAndFontsAreLarge) {
    const LongLanguage longer;
    StillDesktop still; // no fades to wait for
    panels = &still;
    for (const int size : {10, 15, 30}) {
        application().setFont(QFont("sans", size));
        WelcomeVC large;
        large.view().resize(310, 459);
        large.view().show();
        for (int number = 1; number <= 4; ++number) {
            EXPECT_EQ(large.currentPage, number);
            const QWidget* shown = page(large);
            EXPECT_GE(shown->findChildren<QWidget*>()[1]->height(), 170) << "the picture" << size;
            for (const auto* label : shown->findChildren<QLabel*>())
                EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                    << label->text().toStdString() << size;
            EXPECT_GE(large.nextButton->width(), large.nextButton->sizeHint().width());
            EXPECT_EQ(large.view().size(), QSize(310, 459));
            large.nextButton->click();
        }
    }
    panels = nullptr;
}

} // namespace
} // namespace klova::test
