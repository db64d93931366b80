// What is printed on the keys of the keyboard in use.
#pragma once

#include "platform/KeyCodes.h"

#include <functional>
#include <string>

namespace klova {

class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// What a person finds on the key with the code of a letter, as a capital in UTF-8. Codes are
    /// places, so that it may be another letter, or none. Empty where nobody knows.
    virtual std::string legendOf(KeyCode code) const = 0;

    /// `changed` is called when a legend may have changed.
    virtual void setLegendsChanged(std::function<void()> changed) = 0;
};

/// The desktop's; borrowed from the program's start. Null where keys are those of a US keyboard.
inline Keyboard* keyboard = nullptr;

} // namespace klova
