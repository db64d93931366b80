#include "Model.h"

#include <algorithm>
#include <array>
#include <utility>

namespace klova::stress {

bool Model::armed() const {
    return keys_.contains(key::leftSuper) && keys_.contains(layout_.control);
}

bool Model::isModifier(Key key) const {
    static constexpr std::array same = {key::leftShift,    key::rightShift, key::leftAlt,
                                        key::rightControl, key::leftSuper,  key::rightSuper};
    return key == layout_.control || (key == key::rightAlt && layout_.rightAltIsModifier) ||
           std::ranges::find(same, key) != same.end();
}

bool Model::modifierHeld() const {
    return std::ranges::any_of(keys_, [this](Key key) { return isModifier(key); }) ||
           keys_.contains(key::rightAlt);
}

Verdict Model::pressKey(Key key) {
    const bool wasArmed = armed();
    keys_.insert(key);
    return verdictOn(key, true, wasArmed);
}

Verdict Model::releaseKey(Key key) {
    const bool wasArmed = armed();
    keys_.erase(key);
    return verdictOn(key, false, wasArmed);
}

Verdict Model::verdictOn(Key key, bool press, bool wasArmed) {
    if (wasArmed && !armed())
        disarm(); // and the application gets this very release
    if (lost_)
        return Verdict::either;
    if (keyboard_ == Holder::other)
        return Verdict::heard;
    if (keyboard_ == Holder::unsure)
        return Verdict::either;
    const bool undecided = managerDecides(key, press);
    const auto verdict = verdictOfKlova(key, press);
    return undecided ? Verdict::either : verdict;
}

Verdict Model::verdictOfKlova(Key key, bool press) {
    if (isModifier(key))
        return press ? pressOfModifier(key) : releaseOfModifier(key);
    return armed() ? Verdict::kept : Verdict::heard;
}

bool Model::managerDecides(Key key, bool press) {
    const bool isSuper = key == key::leftSuper || key == key::rightSuper;
    const bool wasSuper = std::exchange(superJustPressed_, superIsHeldBack_ && press && isSuper);
    return wasSuper || superJustPressed_;
}

Verdict Model::pressOfModifier(Key key) {
    if (!armed())
        return Verdict::heard;
    keyboard_ = Holder::klova;
    keptModifiers_.insert(key);
    return Verdict::kept;
}

/// Its release goes where its press went, while armed; after that everything is the application's.
Verdict Model::releaseOfModifier(Key key) {
    return armed() && keptModifiers_.erase(key) > 0 ? Verdict::kept : Verdict::heard;
}

void Model::disarm() {
    keptModifiers_.clear();
    pointerIsKept_ = false;
    if (keyboard_ != Holder::other)
        keyboard_ = Holder::nobody;
}

void Model::freeKeyboard() { keyboard_ = armed() ? Holder::unsure : Holder::nobody; }

void Model::keyboardIsKept() {
    if (keyboard_ == Holder::unsure)
        keyboard_ = Holder::klova;
}

Verdict Model::pressButton(Button button) {
    const bool first = buttons_.empty();
    buttons_.insert(button);
    if (!pointerIsForeign_ && armed() && first && (button == 1 || button == 3))
        pointerIsKept_ = true;
    if (lost_)
        return Verdict::either;
    return pointerIsKept_ ? Verdict::kept : Verdict::heard;
}

Verdict Model::releaseButton(Button button) {
    buttons_.erase(button);
    const bool kept = pointerIsKept_;
    if (buttons_.empty())
        pointerIsKept_ = false;
    if (lost_)
        return Verdict::either;
    return kept ? Verdict::kept : Verdict::heard;
}

} // namespace klova::stress
