#include "app/QtApplication.h"

#include "app/Alert.h"

#include <QAccessible>
#include <QPixmapCache>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <sysexits.h>

namespace klova {
namespace {

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Qt keeps a reference to the arguments. Klova has no options, so neither has Qt.
struct Arguments {
    char name[6] = "klova";
    char* values[2] = {name, nullptr};
    int count = 1;
};

Arguments& prepared(const char* platform) {
    ::setenv("QT_QPA_PLATFORM", platform, 1);
    // A session manager would start Klova again at each login, beside the login item.
    ::unsetenv("SESSION_MANAGER");
    // Qt complains of any other encoding and then uses this one.
    if (std::setlocale(LC_CTYPE, "") == nullptr ||
        std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0)
        ::setenv("LC_ALL", "C.UTF-8", 1);
    QCoreApplication::setApplicationName("klova");
    QGuiApplication::setDesktopFileName("klova");
    static Arguments arguments;
    return arguments;
}

} // namespace

QtApplication::QtApplication(const char* platform)
    : application_(prepared(platform).count, prepared(platform).values) {
    QGuiApplication::setApplicationDisplayName("Klova");
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QPixmapCache::setCacheLimit(0); // Qt would wake up every half a minute to look through it
    std::setlocale(LC_NUMERIC, "C");
    // Makes the bridge to screen readers, which asks the session bus and waits for the answer: now
    // and not with the first panel, when keys may be held back.
    QAccessible::isActive();
}

void QtApplication::activateIgnoringOtherApps() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        window->raise();
        window->activateWindow();
    }
}

int QtApplication::runModalAlert(std::string_view message, std::string_view informative) {
    Alert(textOf(message), textOf(informative)).exec();
    return kAlertFirstButton;
}

void QtApplication::terminate() {
    if (!running_)
        std::_Exit(EX_NOPERM);
    QCoreApplication::exit();
}

void QtApplication::run() {
    running_ = true;
    QCoreApplication::exec();
    running_ = false;
}

} // namespace klova
