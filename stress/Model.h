// What an application has to hear of a person's keys and buttons while Klova runs.
#pragma once

#include "Keyboard.h"

#include <cstdint>
#include <set>

namespace klova::stress {

enum class Verdict : std::uint8_t {
    heard,
    kept,
    either, // the moment decides, and both are right
};

class Model {
public:
    /// Some managers hold each press of Super back until the next key tells what it is for, and
    /// let that one past everybody else's grabs; what becomes of the two is then their affair.
    explicit Model(const Layout& layout, bool superIsHeldBack = false)
        : layout_(layout), superIsHeldBack_(superIsHeldBack) {}

    Verdict pressKey(Key key);
    Verdict releaseKey(Key key);
    Verdict pressButton(Button button);
    Verdict releaseButton(Button button);

    /// Another program's grab, which gets what nobody else does. To be had only where Klova has
    /// none (mayGrab...).
    void grabKeyboard() { keyboard_ = Holder::other; }
    void freeKeyboard();
    void grabPointer() { pointerIsForeign_ = true; }
    void freePointer() { pointerIsForeign_ = false; }
    bool mayGrabKeyboard() const { return !armed() && keyboard_ == Holder::nobody; }
    bool mayGrabPointer() const { return !pointerIsForeign_ && buttons_.empty(); }
    bool keyboardIsForeign() const { return keyboard_ == Holder::other; }
    bool pointerIsForeign() const { return pointerIsForeign_; }

    /// From here on Klova has the keyboard, if it is armed.
    void keyboardIsKept();

    /// From here on until all is released nothing can be said for sure.
    void loseTrack() { lost_ = true; }
    bool lost() const { return lost_; }

    bool armed() const;
    bool isModifier(Key key) const;
    bool modifierHeld() const;
    const std::set<Key>& keys() const { return keys_; }
    const std::set<Button>& buttons() const { return buttons_; }

private:
    enum class Holder : std::uint8_t { nobody, klova, other, unsure };

    Verdict verdictOn(Key key, bool press, bool wasArmed);
    Verdict verdictOfKlova(Key key, bool press);
    bool managerDecides(Key key, bool press);
    Verdict pressOfModifier(Key key);
    Verdict releaseOfModifier(Key key);
    void disarm();

    const Layout& layout_;
    bool superIsHeldBack_;
    bool superJustPressed_ = false;
    std::set<Key> keys_;
    std::set<Key> keptModifiers_;
    std::set<Button> buttons_;
    Holder keyboard_ = Holder::nobody;
    bool pointerIsKept_ = false;
    bool pointerIsForeign_ = false;
    bool lost_ = false;
};

} // namespace klova::stress
