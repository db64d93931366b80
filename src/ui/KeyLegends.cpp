#include "ui/KeyLegends.h"

#include "platform/Keyboard.h"

#include <algorithm>
#include <array>
#include <utility>

namespace klova {
namespace {

constexpr std::array<std::pair<KeyCode, char>, 8> kUnitedStates{{{key::a, 'A'},
                                                                 {key::s, 'S'},
                                                                 {key::d, 'D'},
                                                                 {key::c, 'C'},
                                                                 {key::q, 'Q'},
                                                                 {key::w, 'W'},
                                                                 {key::e, 'E'},
                                                                 {key::t, 'T'}}};

} // namespace

QString legendOf(KeyCode code) {
    if (keyboard != nullptr)
        if (const auto legend = keyboard->legendOf(code); !legend.empty())
            return QString::fromStdString(legend);
    const auto* known = std::ranges::find(kUnitedStates, code, &std::pair<KeyCode, char>::first);
    return known != kUnitedStates.end() ? QString(QChar(known->second)) : QString();
}

QString legendOfReopenKey(std::int64_t reopenKey) {
    if (reopenKey == key::q)
        return legendOf(key::q);
    return legendOf(reopenKey == key::e ? key::e : key::c);
}

} // namespace klova
