// How the desktop itself tells the person that Klova may not do its work.
#pragma once

#include <string>
#include <vector>

namespace klova {

/// Why Klova may not see and move other programs' windows.
struct LackOfTrust {
    enum class Reason { untrustedConnection, waylandSession, missingFeatures };

    Reason reason = Reason::missingFeatures;
    std::vector<std::string> missing; ///< features of the display, as a person would call them
};

class TrustPrompt {
public:
    virtual ~TrustPrompt() = default;

    /// Never waits for the person, nor for a desktop that does not answer.
    virtual void show(const LackOfTrust& lack) = 0;
};

} // namespace klova
