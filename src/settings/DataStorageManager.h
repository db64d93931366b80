// The person's choices: the live values and their copies in the preferences store.
#pragma once

#include "platform/Desktop.h"
#include "platform/KeyCodes.h"

#include <cstdint>
#include <vector>

namespace klova {

class DataStorageManager;

/// The gestures of the double click.
inline bool maximizingEnabled = true;
inline bool centeringEnabled = true;

/// The key that reopens the window minimized last.
inline std::int64_t deminimizeButton = key::c;

/// The one manager; borrowed from the shell, null until start-up made it.
inline DataStorageManager* dataStorageManager = nullptr;

/// Moves settings between the process-wide variables and the store. The variables are what counts;
/// the store is read at start-up and written when a setting changes.
class DataStorageManager {
public:
    /// `desktop` is borrowed and outlives this.
    explicit DataStorageManager(Desktop& desktop) : defaults_(desktop.preferences) {}

    void setNotFirstTime(bool notFirstTime);

    /// Whether no run before called this; from now on one has.
    bool isFirstTimeAndManage();

    void saveKeys();

    /// Replaces `activationKeys` by the stored ones, or by Control and Command where no list of
    /// numbers is stored. A number that is no 16-bit code is a fatal error.
    void writeToGlobalActivationKeys();

    /// Notes the choice only; the login items are not touched.
    void saveStartupSettings(bool launching);
    bool isLaunchingOnStartup();

    void saveMaxCenterSettings();
    void writeToMaxCenterSettings();

    void saveDeminimizeButton();
    void writeToDeminimizeButton();

private:
    std::vector<KeyCode> readActivationKeys();
    KeyCode keyCodeOf(const StoredValue& number) const;

    PreferencesStore& defaults_;
};

} // namespace klova
