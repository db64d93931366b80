// Puts Klova together: the X11 desktop, the services beside it, and the application on top.

#include "app/AppDelegate.h"
#include "app/DesktopPump.h"
#include "app/GestureMenu.h"
#include "app/QtApplication.h"
#include "app/QtMessages.h"
#include "app/QuitSignals.h"
#include "app/TrayIcon.h"
#include "input/ActivationKeys.h"
#include "platform/Diagnostics.h"
#include "platform/Keyboard.h"
#include "platform/Panels.h"
#include "platform/UniqueDescriptor.h"
#include "platform/freedesktop/AutostartItems.h"
#include "platform/freedesktop/JsonPreferencesStore.h"
#include "platform/freedesktop/Notification.h"
#include "platform/freedesktop/ProgramFile.h"
#include "platform/freedesktop/TrustNotification.h"
#include "platform/x11/Guard.h"
#include "platform/x11/SingleInstance.h"
#include "platform/x11/ToolkitConnection.h"
#include "platform/x11/X11Desktop.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QString>
#include <QTimer>
#include <QWindow>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <sysexits.h>
#include <utility>

namespace {

using namespace klova;

int end(int status, const std::string& sentence) {
    errorLine(sentence + ".");
    return status;
}

int answerArguments(std::string_view argument, bool alone) {
    if (alone && argument == "--version")
        return std::puts("klova " KLOVA_VERSION) < 0 ? EX_IOERR : EX_OK;
    if (alone && argument == "--help")
        return std::puts("Usage: klova\nArranges windows from keyboard and mouse, from the tray of "
                         "the display in $DISPLAY.") < 0
                   ? EX_IOERR
                   : EX_OK;
    return end(EX_USAGE, "takes no arguments but --help or --version");
}

/// Where standard streams are closed the next file opened would take their place, and diagnostic
/// lines would go to the X server.
void occupyStandardDescriptors() {
    int descriptor = ::open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    const UniqueDescriptor spare(descriptor);
}

[[noreturn]] void endWithoutServer() { std::_Exit(end(EX_UNAVAILABLE, "the X server has gone")); }

/// The connection whose loss explains why the process ends, -1 while there is none.
int watchedConnection = -1;

/// Qt ends the process by itself, with status 1, when its own connection breaks before ours does.
void endWithoutServerIfItIsGone() {
    constexpr int patience = 1000; // milliseconds; the server closes one connection after another
    pollfd connection{.fd = watchedConnection, .events = POLLRDHUP, .revents = 0};
    if (watchedConnection >= 0 && ::poll(&connection, 1, patience) > 0)
        endWithoutServer();
}

/// With no key to hold the gestures stay armed from the first modifier on, and clicks do not get
/// through to the menu.
void sayHowToQuitWithoutKeys() {
    if (activationKeys.empty())
        notify(QCoreApplication::translate("main", "Klova has no activation keys"),
               QCoreApplication::translate(
                   "main", "From the first modifier key that you press, such as Ctrl, Klova keeps "
                           "all keys for its gestures. The key T quits it then."),
               Urgency::normal);
}

/// Whoever chose them may see no terminal.
void sayOfSettings(const std::string& sentence) {
    errorLine(sentence);
    QString text = QString::fromStdString(sentence);
    text[0] = text[0].toUpper();
    notify(QCoreApplication::translate("main", "Klova's settings file"), text, Urgency::normal);
}

/// What goes on in other programs is not to wake Qt either.
void letQtSleep(const x11::Atoms& atoms) {
    const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr)
        return;
    // Qt signals no change of the focus when the window that has it is destroyed.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     qGuiApp,
                     [toolkit = x11::ToolkitConnection(native->connection(), atoms)]() mutable {
                         const QWindow* window = QGuiApplication::focusWindow();
                         const auto id = window != nullptr ? window->winId() : XCB_NONE;
                         toolkit.focusChanged(static_cast<xcb_window_t>(id));
                     });
}

void runOn(x11::X11Desktop& x11, AutostartItems& loginItems) {
    QuitSignals quitSignals; // not before the connection, which may take forever
    x11::setXlibConnectionLost(endWithoutServer);
    handleQtMessages();
    watchedConnection = x11.descriptor();
    std::atexit(endWithoutServerIfItIsGone);
    QtApplication application("xcb");
    letQtSleep(x11.connection().atoms());
    DesktopPump pump(x11, endWithoutServer);
    quitSignals.deliverTo([&application] { application.terminate(); });
    panels = &x11.panels();
    keyboard = &x11.keyboard();
    TrayIcon tray(x11.trayArea());
    JsonPreferencesStore preferences(configurationFolder() / "preferences.json", sayOfSettings);
    Desktop desktop{.accessibility = x11.accessibility(),
                    .workspace = x11.workspace(),
                    .screens = x11.screens(),
                    .taps = x11.taps(),
                    .monitors = x11.monitors(),
                    .statusItem = tray,
                    .preferences = preferences,
                    .application = application,
                    .loginItems = loginItems};
    AppDelegate delegate(desktop, tray);
    const GestureMenu menu(delegate);
    keyboard->setLegendsChanged([&delegate] { delegate.updateShortCutLabels(); });
    QTimer startedAgain; // due at once, but behind the input that waits
    startedAgain.setSingleShot(true);
    QObject::connect(&startedAgain, &QTimer::timeout, &startedAgain,
                     [&delegate] { delegate.openPreferences(); });
    x11.instance().setCalled([&] {
        if (application.running())
            startedAgain.start();
    });
    QTimer::singleShot(0, [&application] {
        if (application.running()) // the settings are loaded
            sayHowToQuitWithoutKeys();
    });
    delegate.applicationDidFinishLaunching();
    watchedConnection = -1;
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Without an X server there is nothing to show the alert on.
int endOnWayland(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    TrustNotification().show({LackOfTrust::Reason::waylandSession, {}});
    return EX_NOPERM;
}

int connectAndRun(const char* invokedAs) {
    AutostartItems autostart(runningProgram(invokedAs));
    TrustNotification trustPrompt;
    UniqueDescriptor guard = x11::startGuard();
    x11::X11Desktop x11;
    x11.setTrustPrompt(trustPrompt);
    if (!x11.instance().acquired()) {
        x11.instance().callFirst();
        return end(EX_OK, "already running on display " + variable("DISPLAY"));
    }
    x11.reportTo(std::move(guard));
    runOn(x11, autostart);
    return EX_OK;
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardDescriptors();
    if (argc > 1)
        return answerArguments(argv[1], argc == 2);
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return connectAndRun(argc > 0 ? argv[0] : "");
    } catch (const x11::DisplayUnreachable& unreachable) {
        if (variable("DISPLAY").empty() && !variable("WAYLAND_DISPLAY").empty())
            return endOnWayland(argc, argv);
        return end(EX_UNAVAILABLE, unreachable.what());
    }
}
