// What the core asks of the application's shell.
#pragma once

namespace klova {

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual void quitApplication() = 0;
};

} // namespace klova
