#include "ui/gestures/Keycaps.h"

#include "input/ActivationKeys.h"
#include "ui/KeyLegends.h"

#include <QCoreApplication>
#include <algorithm>

namespace klova {
namespace {

struct Name {
    KeyCode code;
    const char* text;
};

constexpr Name kNames[] = {
    {key::command, QT_TRANSLATE_NOOP("klova", "Super")},
    {key::shift, QT_TRANSLATE_NOOP("klova", "Shift")},
    {key::option, QT_TRANSLATE_NOOP("klova", "Alt")},
};

Keycap keycapOf(KeyCode code) {
    const auto* name = std::ranges::find(kNames, code, &Name::code);
    return {QString::fromStdString(activationKeyLabel({&code, 1})),
            name != std::end(kNames) ? QCoreApplication::translate("klova", name->text)
                                     : QString()};
}

} // namespace

Keycaps keycapsOf(std::span<const KeyCode> activation, std::int64_t reopenKey) {
    Keycaps keycaps{.activation = {}, .reopen = legendOfReopenKey(reopenKey)};
    for (const KeyCode code : activation) {
        Keycap keycap = keycapOf(code);
        if (!keycap.symbol.isEmpty() &&
            !std::ranges::count(keycaps.activation, keycap.symbol, &Keycap::symbol))
            keycaps.activation.push_back(std::move(keycap));
    }
    return keycaps;
}

QString spoken(const Keycaps& keycaps) {
    QStringList names;
    for (const Keycap& keycap : keycaps.activation)
        names << (keycap.name.isEmpty() ? keycap.symbol : keycap.name);
    return names.isEmpty() ? QCoreApplication::translate("klova", "the activation keys")
                           : names.join(QStringLiteral(" + "));
}

} // namespace klova
