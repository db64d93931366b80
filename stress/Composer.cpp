#include "Composer.h"

#include <algorithm>
#include <numeric>
#include <xcb/xproto.h>

namespace klova::stress {
namespace {

constexpr int kRepeatAfter = 750; // milliseconds

template <typename T> std::vector<T> asVector(const std::set<T>& items) {
    return {items.begin(), items.end()};
}

} // namespace

Composer::Composer(Random& random, const Temper& temper, int layout)
    : random_(random), layout_(layouts()[static_cast<std::size_t>(layout)]),
      model_(layout_, temper.superIsHeldBack) {
    stream_.temper = temper;
    stream_.layout = layout;
}

std::vector<Composer::Choice> Composer::choices() const {
    std::vector<Choice> table = {
        {10, &Composer::toggleActivationKey},
        {3, &Composer::toggleOtherModifier},
        {3, &Composer::chord},
        {12, &Composer::tapKey},
        {5, &Composer::toggleKey},
        {1, &Composer::tapLock},
        {9, &Composer::click},
        {4, &Composer::toggleButton},
    };
    if (stream_.temper.pad)
        table.insert(table.end(), {{4, &Composer::move}, {2, &Composer::drag}});
    if (stream_.temper.guests)
        table.push_back({8, &Composer::guestEvent});
    if (stream_.temper.grabs)
        table.push_back({6, &Composer::grabOrFree});
    if (stream_.temper.monitors)
        table.push_back({2, &Composer::monitorEvent});
    return table;
}

Stream Composer::compose() {
    const auto table = choices();
    const int weights = std::accumulate(table.begin(), table.end(), 0,
                                        [](int sum, const auto& row) { return sum + row.weight; });
    const std::size_t length = 20 + static_cast<std::size_t>(random_.below(80));
    const std::size_t upheavalAt =
        stream_.temper.upheaval ? static_cast<std::size_t>(random_.below(60)) : length;
    const bool holds = random_.oneIn(12);
    if (stream_.temper.pad)
        move();
    while (stream_.steps.size() < length) {
        if (stream_.steps.size() >= upheavalAt && !model_.lost())
            upheaval();
        int chance = random_.below(weights);
        const auto row = std::ranges::find_if(
            table, [&](const Choice& choice) { return (chance -= choice.weight) < 0; });
        (this->*row->make)();
        if (holds && random_.oneIn(30))
            holdKey();
    }
    releaseAll();
    dismissGuests();
    return std::move(stream_);
}

void Composer::add(Act act, int detail, int other) {
    stream_.steps.push_back({act, detail, other});
}

void Composer::expect(std::uint8_t type, int detail, Verdict verdict) {
    stream_.expected.push_back(
        {type, static_cast<std::uint8_t>(detail), verdict, stream_.steps.size() - 1});
}

void Composer::press(Key key) {
    add(Act::pressKey, key);
    const auto verdict = model_.pressKey(key);
    expect(XCB_KEY_PRESS, key, verdict);
    if (verdict == Verdict::kept && !model_.isModifier(key))
        ++stream_.gestures;
}

void Composer::release(Key key) {
    add(Act::releaseKey, key);
    expect(XCB_KEY_RELEASE, key, model_.releaseKey(key));
}

void Composer::press(Button button, bool fits) {
    if (!fits || model_.buttons().contains(button))
        return;
    if (!stream_.temper.pad &&
        model_.armed()) // far enough from the last click not to be a double one
        add(Act::movePointer, 650 + static_cast<int>(stream_.steps.size() % 10) * 10, 450);
    add(Act::pressButton, button);
    const auto verdict = model_.pressButton(button);
    expect(XCB_BUTTON_PRESS, button, verdict);
    if (verdict == Verdict::kept)
        ++stream_.gestures;
}

void Composer::releaseButton(Button button) {
    if (!model_.buttons().contains(button))
        return;
    add(Act::releaseButton, button);
    expect(XCB_BUTTON_RELEASE, button, model_.releaseButton(button));
}

/// With modifiers held that are not the whole set a window manager may want the key.
std::vector<Key> Composer::pressable() const {
    auto keys = idleKeys();
    if (model_.armed() ? stream_.temper.pad : !model_.modifierHeld()) {
        keys.insert(keys.end(), directionKeys().begin(), directionKeys().end());
        keys.insert(keys.end(), {key::c, key::q, key::e});
    }
    std::erase_if(keys, [this](Key key) { return model_.keys().contains(key); });
    return keys;
}

/// Likewise for the buttons.
std::vector<Button> Composer::clickable() const {
    if (!stream_.temper.pad && model_.modifierHeld())
        return model_.armed() ? std::vector<Button>{1} : std::vector<Button>{};
    if (model_.keys().contains(key::leftAlt) || model_.keys().contains(key::rightAlt))
        return model_.armed() ? std::vector<Button>{1, 3} : std::vector<Button>{};
    return {1, 1, 1, 3, 3, 2, 4, 5};
}

void Composer::toggleActivationKey() {
    toggle(random_.oneIn(2) ? key::leftSuper : layout_.control);
}

void Composer::toggleOtherModifier() {
    toggle(random_.pick<Key>({key::leftShift, key::rightShift, key::leftAlt, key::rightAlt,
                              key::rightControl, key::rightSuper}));
}

void Composer::chord() {
    std::vector<Key> keys = {key::leftSuper, layout_.control};
    random_.shuffle(keys);
    for (const Key key : keys)
        if (!model_.keys().contains(key))
            press(key);
    for (int count = random_.below(4); count > 0; --count)
        random_.oneIn(2) ? tapKey() : click();
    random_.shuffle(keys);
    for (const Key key : keys)
        release(key);
}

void Composer::tapKey() {
    const Key key = random_.pick(pressable());
    press(key);
    release(key);
}

void Composer::toggleKey() {
    auto held = asVector(model_.keys());
    std::erase_if(held, [this](Key key) { return model_.isModifier(key); });
    if (!held.empty() && (held.size() > 2 || random_.oneIn(2)))
        release(random_.pick(held));
    else
        press(random_.pick(pressable()));
}

void Composer::tapLock() {
    // With Shift the lock keys mean something else.
    if (model_.keys().contains(key::leftShift) || model_.keys().contains(key::rightShift))
        return;
    const int lock = random_.below(2);
    const Key key = lock == 0 ? layout_.caps : key::numLock;
    press(key);
    release(key);
    locks_[static_cast<std::size_t>(lock)] = !locks_[static_cast<std::size_t>(lock)];
}

/// Until it repeats: the last key that went down, which must be one that nobody else wants.
void Composer::holdKey() {
    auto keys = idleKeys();
    std::erase_if(keys, [this](Key key) { return model_.keys().contains(key); });
    if (keys.empty() || model_.keyboardIsForeign())
        return;
    const Key key = random_.pick(keys);
    add(Act::repeatKeys, 1);
    press(key);
    add(Act::rest, kRepeatAfter);
    // A kept key that went on repeating unarmed would be heard, nobody knows how often.
    if (stream_.expected.back().verdict == Verdict::heard) {
        toggleActivationKey();
        add(Act::rest, kRepeatAfter / 5);
    }
    release(key);
    add(Act::repeatKeys, 0);
}

void Composer::click() {
    const auto buttons = clickable();
    if (buttons.empty())
        return;
    const Button button = random_.pick(buttons);
    if (model_.buttons().contains(button))
        return;
    press(button, true);
    releaseButton(button);
}

void Composer::toggleButton() {
    const auto held = asVector(model_.buttons());
    if (!held.empty() && random_.oneIn(2)) {
        releaseButton(random_.pick(held));
        return;
    }
    const auto buttons = clickable();
    if (!buttons.empty()) {
        const Button button = random_.pick(buttons);
        press(button, button <= 3); // nobody holds a wheel
    }
}

void Composer::move() {
    add(Act::movePointer, 200 + random_.below(1000), 150 + random_.below(600));
}

void Composer::drag() {
    if (!model_.armed() || !model_.buttons().empty())
        return;
    press(Button{1}, true);
    int x = 300 + random_.below(800), y = 200 + random_.below(500);
    const int stepX = random_.below(11) - 5, stepY = random_.below(11) - 5;
    for (int count = 5 + random_.below(15); count > 0; --count)
        add(Act::movePointer, x += stepX, y += stepY);
    if (!random_.oneIn(4))
        releaseButton(1);
}

void Composer::grabOrFree() {
    if (model_.keyboardIsForeign() && random_.oneIn(2)) {
        add(Act::freeKeyboard);
        model_.freeKeyboard();
        if (model_.armed() && random_.oneIn(2)) {
            add(Act::awaitKeyboard);
            model_.keyboardIsKept();
        }
    } else if (model_.pointerIsForeign() && model_.buttons().empty()) {
        add(Act::freePointer);
        model_.freePointer();
    } else if (random_.oneIn(2) && model_.mayGrabKeyboard()) {
        add(Act::grabKeyboard);
        model_.grabKeyboard();
    } else if (model_.mayGrabPointer()) {
        add(Act::grabPointer);
        model_.grabPointer();
    }
}

void Composer::guestEvent() {
    const int index = random_.below(kGuests);
    auto& guest = guests_[static_cast<std::size_t>(index)];
    if (!guest.open) {
        guest.open = true;
        add(Act::openGuest, index);
    } else if (random_.oneIn(4)) {
        guest = {};
        add(Act::closeGuest, index);
    } else if (index < kGuestPrograms) {
        programEvent(guest, index);
    } else {
        windowEvent(guest, index);
    }
}

void Composer::programEvent(Guest& guest, int index) {
    guest.stopped = !guest.stopped;
    add(guest.stopped ? Act::stopGuest : Act::resumeGuest, index);
}

void Composer::windowEvent(Guest& guest, int index) {
    if (guest.withdrawn || random_.oneIn(5)) {
        guest.withdrawn = !guest.withdrawn;
        add(guest.withdrawn ? Act::withdraw : Act::show, index);
        return;
    }
    add(random_.pick<Act>(
            {Act::stepSizes, Act::freeSizes, Act::toggleFullscreen, Act::toggleMaximized}),
        index);
}

void Composer::monitorEvent() { add(random_.oneIn(2) ? Act::splitMonitors : Act::joinMonitors); }

void Composer::upheaval() {
    model_.loseTrack();
    // Where a modifier moves to another key while it is held the server loses it.
    if (stream_.layout < 2 && random_.oneIn(2))
        add(Act::changeLayout, random_.below(2));
    else
        add(Act::replaceManager);
}

void Composer::releaseAll() {
    if (model_.keyboardIsForeign()) {
        add(Act::freeKeyboard);
        model_.freeKeyboard();
    }
    auto keys = asVector(model_.keys());
    random_.shuffle(keys);
    for (const Key key : keys) {
        release(key);
        if (!model_.buttons().empty() && random_.oneIn(2))
            releaseButton(random_.pick(asVector(model_.buttons())));
    }
    for (const Button button : asVector(model_.buttons()))
        releaseButton(button);
    if (model_.pointerIsForeign())
        add(Act::freePointer);
    model_.freePointer();
    for (std::size_t lock = 0; lock < locks_.size(); ++lock)
        if (locks_[lock]) {
            const Key key = lock == 0 ? layout_.caps : key::numLock;
            press(key);
            release(key);
        }
}

void Composer::dismissGuests() {
    for (int index = 0; index < kGuests; ++index)
        if (guests_[static_cast<std::size_t>(index)].open)
            add(Act::closeGuest, index);
    if (stream_.temper.monitors)
        add(Act::joinMonitors);
}

} // namespace klova::stress
