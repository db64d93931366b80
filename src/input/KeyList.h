// A list of key codes as a diagnostic line shows it.
#pragma once

#include <string>
#include <vector>

namespace klova {

/// "[55, 59]"
template <typename Code> std::string description(const std::vector<Code>& codes) {
    std::string text;
    for (const Code code : codes)
        text += (text.empty() ? "" : ", ") + std::to_string(code);
    return "[" + text + "]";
}

} // namespace klova
