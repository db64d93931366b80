#include "app/MenuTitles.h"

#include "input/ActivationKeys.h"
#include "settings/DataStorageManager.h"
#include "ui/KeyLegends.h"

#include <QCoreApplication>

namespace klova {
namespace {

class Text {
    Q_DECLARE_TR_FUNCTIONS(StatusMenu)
};

QString maximizingTitle() {
    if (maximizingEnabled == centeringEnabled)
        return Text::tr("Maximizing/Centering: %1 + Left Doubleclick");
    return maximizingEnabled ? Text::tr("Maximizing: %1 + Left Doubleclick")
                             : Text::tr("Centering: %1 + Left Doubleclick");
}

} // namespace

MenuTitles menuTitles() {
    const QString keys = QString::fromStdString(activationKeyLabel(activationKeys));
    return {
        .activationKeys = Text::tr("Activation Keys: %1").arg(keys),
        .dragging = Text::tr("Dragging: %1 + Left Mouse").arg(keys),
        .minimizing = Text::tr("Minimizing: %1 + Right Mouseclick").arg(keys),
        .reopen = Text::tr("Reopen minimized Window: %1 + %2")
                      .arg(keys, legendOfReopenKey(deminimizeButton)),
        .maximizing = maximizingTitle().arg(keys),
        .left = Text::tr("Left: %1 + ←").arg(keys),
        .right = Text::tr("Right: %1 + →").arg(keys),
        .top = Text::tr("Top: %1 + ↑").arg(keys),
        .bottom = Text::tr("Bottom: %1 + ↓").arg(keys),
        .topLeft = Text::tr("Top Left: %1 + ←↑").arg(keys),
        .topRight = Text::tr("Top Right: %1 + ↑→").arg(keys),
        .bottomLeft = Text::tr("Bottom Left: %1 + ←↓").arg(keys),
        .bottomRight = Text::tr("Bottom Right: %1 + ↓→").arg(keys),
        .quit = Text::tr("Quit KLOVA: %1 + %2").arg(keys, legendOf(key::t)),
    };
}

} // namespace klova
