// The chosen modifier keys, the held ones, and whether all of the chosen are held.
#pragma once

#include "platform/KeyCodes.h"

#include <span>
#include <string>
#include <vector>

namespace klova {

/// The keys that arm the gestures while all are held, in the person's order; may hold duplicates.
inline std::vector<KeyCode> activationKeys;

/// The modifier keys that are down, in the order in which they went down.
inline std::vector<KeyCode> heldModifierKeys;

/// Set when a press completes the activation keys, cleared when a release breaks them.
inline bool activationComplete = false;

/// Whether every activation key is held; without any key chosen always.
bool activationKeysHeld();

/// The keys' symbols, joined in list order; a key without a symbol adds nothing.
std::string activationKeyLabel(std::span<const KeyCode> keys);

} // namespace klova
