// Makes up streams by chance.
#pragma once

#include "Random.h"
#include "Stream.h"

#include <array>

namespace klova::stress {

/// How many guests there may be. Some are programs of their own, some only windows.
inline constexpr int kGuestPrograms = 2;
inline constexpr int kGuests = 4;

class Composer {
public:
    Composer(Random& random, const Temper& temper, int layout);

    Stream compose();

private:
    struct Choice {
        int weight;
        void (Composer::*make)();
    };
    struct Guest {
        bool open = false;
        bool stopped = false;
        bool withdrawn = false;
    };

    std::vector<Choice> choices() const;
    void add(Act act, int detail = 0, int other = 0);
    void expect(std::uint8_t type, int detail, Verdict verdict);

    void press(Key key);
    void release(Key key);
    void toggle(Key key) { model_.keys().contains(key) ? release(key) : press(key); }
    void press(Button button, bool fits);
    void releaseButton(Button button);
    std::vector<Key> pressable() const;
    std::vector<Button> clickable() const;

    void toggleActivationKey();
    void toggleOtherModifier();
    void chord();
    void tapKey();
    void toggleKey();
    void tapLock();
    void holdKey();
    void click();
    void toggleButton();
    void move();
    void drag();
    void grabOrFree();
    void guestEvent();
    void programEvent(Guest& guest, int index);
    void windowEvent(Guest& guest, int index);
    void monitorEvent();
    void upheaval();
    void releaseAll();
    void dismissGuests();

    Random& random_;
    const Layout& layout_;
    Model model_;
    Stream stream_;
    std::array<Guest, kGuests> guests_;
    std::array<bool, 2> locks_{}; // Caps and Num Lock
};

} // namespace klova::stress
