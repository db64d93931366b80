#include "Step.h"

#include <array>
#include <ostream>

namespace klova::stress {

std::ostream& operator<<(std::ostream& stream, const Step& step) {
    static constexpr std::array names{"press key",         "release key",
                                      "press button",      "release button",
                                      "move pointer to",   "rest",
                                      "repeat keys",       "grab keyboard",
                                      "free keyboard",     "grab pointer",
                                      "free pointer",      "await the keyboard",
                                      "open guest",        "close guest",
                                      "stop guest",        "resume guest",
                                      "step sizes of",     "free sizes of",
                                      "withdraw",          "show",
                                      "toggle fullscreen", "toggle maximized",
                                      "split monitors",    "join monitors",
                                      "change layout",     "replace manager"};
    stream << names[static_cast<std::size_t>(step.act)] << ' ' << step.detail;
    if (step.act == Act::movePointer)
        stream << ' ' << step.other;
    return stream;
}

} // namespace klova::stress
