#include "input/ActivationKeys.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace klova {
namespace {

struct Symbol {
    KeyCode code;
    std::string_view text;
};

constexpr std::array<Symbol, 5> kSymbols{{
    {key::command, "\u2318"},
    {key::shift, "\u21E7"},
    {key::option, "\u2325"},
    {key::control, "Ctrl"},
    {key::fn, "fn"},
}};

} // namespace

bool activationKeysHeld() {
    return std::ranges::all_of(activationKeys, [](KeyCode code) {
        return std::ranges::find(heldModifierKeys, code) != heldModifierKeys.end();
    });
}

std::string activationKeyLabel(std::span<const KeyCode> keys) {
    std::string label;
    for (const KeyCode code : keys) {
        const auto* symbol = std::ranges::find(kSymbols, code, &Symbol::code);
        if (symbol != kSymbols.end())
            label += symbol->text;
    }
    return label;
}

} // namespace klova
