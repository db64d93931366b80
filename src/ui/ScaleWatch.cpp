#include "ui/ScaleWatch.h"

#include <QGuiApplication>
#include <QScreen>

namespace klova {

void watchScale(QObject& context, const std::function<void()>& changed) {
    const auto watch = [&context, changed](const QScreen* screen) {
        QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, &context, changed,
                         Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context, watch);
}

} // namespace klova
