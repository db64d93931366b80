// What the core asks of the application's shell.
#pragma once

namespace klova {

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual void quitApplication() = 0;

    /// To be called after the activation keys changed.
    virtual void updateActivationKeyLabel() = 0;

    /// To be called after any setting that a shortcut's label shows changed.
    virtual void updateShortCutLabels() = 0;
};

} // namespace klova
