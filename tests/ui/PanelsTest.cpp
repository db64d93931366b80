// The panels as windows: what opening and closing them does, and that all in them can be read.
#include "input/ShellState.h"
#include "settings/DataStorageManager.h"
#include "ui/AboutDocument.h"
#include "ui/AboutVC.h"
#include "ui/AboutWindow.h"
#include "ui/Images.h"
#include "ui/Offscreen.h"
#include "ui/Palette.h"
#include "ui/PreferencesDocument.h"
#include "ui/PreferencesWindow.h"
#include "ui/WelcomeDocument.h"

#include <QLabel>
#include <QScreen>
#include <cmath>

namespace klova::test {
namespace {

class PanelsTest : public CoreTest {
protected:
    PanelsTest() {
        application().setFont(QFont("sans", 10));
        applicationDelegate = &shell;
        dataStorageManager = &manager;
    }

    NotingShell shell{sim};
    DataStorageManager manager{desktop};
};

TEST_F(PanelsTest, haveTheirOwnAttributesWhateverIsAskedFor) {
    const PreferencesWindow preferences({5, 6, 70, 80}, 0, BackingStore::nonretained, true);
    const AboutWindow about({}, kTexturedBackground, BackingStore::buffered, false);
    for (const PanelWindow* panel :
         {static_cast<const PanelWindow*>(&preferences), static_cast<const PanelWindow*>(&about)}) {
        const WindowAttributes& attributes = panel->attributes();
        EXPECT_EQ(attributes.contentRect.topLeft(), QPoint(100, 100));
        EXPECT_EQ(attributes.styleMask, 0x8101U);
        EXPECT_EQ(attributes.backing, BackingStore::buffered);
        EXPECT_FALSE(attributes.deferred || attributes.opaque || attributes.ignoresMouseEvents);
        EXPECT_TRUE(attributes.hasShadow && attributes.movableByWindowBackground);
        EXPECT_EQ(attributes.cornerRadius, 5.0);
        const QRect content = panel->geometry().marginsRemoved(kShadowMargins);
        EXPECT_EQ(content.size(), attributes.contentRect.size());
        EXPECT_EQ(content.center(), QGuiApplication::primaryScreen()->geometry().center());
    }
    EXPECT_EQ(preferences.attributes().contentRect.size(), QSize(310, 459));
    QDataStream archive;
    EXPECT_EQ(fatalMessage([&] { const PanelWindow archived(archive); }),
              "init(coder:) has not been implemented");
}

template <class Document> void opensAndCloses(Document& document, NotingShell& shell) {
    panelOpen = true;
    document.makeWindowControllers();
    PanelWindow* window = document.windowControllers().front()->window();
    WindowButton& button = document.windowControllers().front()->closeButton();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(button.geometry(), window->contentView().rect());
    for (int times = 0; times < 2; ++times) {
        button.click();
        EXPECT_FALSE(panelOpen || window->isVisible());
        EXPECT_EQ(std::exchange(shell.log, {}).back(), "menu on") << times;
    }
    document.close();
    EXPECT_EQ(shell.log.back(), "menu on");
}

TEST_F(PanelsTest, openAndCloseAsOftenAsAsked) {
    PreferencesDocument preferences;
    opensAndCloses(preferences, shell);
    ASSERT_NE(preferences.preferencesWindowViewController, nullptr);
    preferences.preferencesWindowViewController->openPreferencesWindow();
    EXPECT_TRUE(preferences.preferencesWindowViewController->window()->isVisible());
    WelcomeDocument welcome;
    opensAndCloses(welcome, shell);
    AboutDocument about;
    opensAndCloses(about, shell);
}

TEST_F(PanelsTest, areNeverSavedOrLoaded) {
    AboutDocument document;
    StatusError reading, saving;
    EXPECT_FALSE(document.readFromData("data", "type", reading));
    EXPECT_EQ(document.dataOfType("type", saving), std::nullopt);
    for (const StatusError& error : {reading, saving}) {
        EXPECT_EQ(error.domain, "NSOSStatusErrorDomain");
        EXPECT_EQ(error.code, -4);
    }
}

TEST_F(PanelsTest, haveRoomForTheirTextsAlsoWhereTheyAreLongAndFontsAreLarge) {
    const LongLanguage longer;
    for (const int size : {10, 15, 30}) {
        application().setFont(QFont("sans", size));
        PreferencesVC preferences;
        AboutVC about;
        for (QWidget* view : {&preferences.view(), &about.view()}) {
            view->show();
            for (const QLabel* label : view->findChildren<QLabel*>()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                    << label->text().toStdString() << size;
                EXPECT_TRUE(view->rect().contains(label->geometry())) << size;
            }
        }
    }
}

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

TEST(Colours, standOutFromWhatTheyAreOn) {
    using namespace palette;
    for (const auto& [light, dark] : {std::pair(kGray, kGround),
                                      {kGray, kWell},
                                      {kText, kGround},
                                      {kHint, kGround},
                                      {kAccent, kOnAccent},
                                      {kBright, kGround}})
        EXPECT_GE((luminance(light) + 0.05) / (luminance(dark) + 0.05), 4.5)
            << light.name().toStdString();
}

TEST_F(PanelsTest, picturesAreThereAtEachSize) {
    for (const char* name :
         {"Menulet_activated", "Menulet_deactivated", "launchAtStartOn", "launchAtStartOff",
          "StartButtonOff", "AboutBg", "PreferencesBg", "klova"}) {
        const QIcon image = imageNamed(name);
        for (const int side : {16, 22, 24, 32, 64, 256}) {
            const QImage drawn = image.pixmap({side, side}, 1.0).toImage();
            EXPECT_EQ(drawn.size(), QSize(side, side)) << name;
            EXPECT_EQ(drawn.pixelColor(side / 2, side / 2 + side / 5).alpha(), 255) << name << side;
        }
    }
    EXPECT_NE(fatalMessage([] { imageNamed("klova-2"); }), "");
}

} // namespace
} // namespace klova::test
