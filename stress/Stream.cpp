#include "Stream.h"

namespace klova::stress {

std::string description(const Temper& temper) {
    std::string text = temper.pad ? "clicks on a pad" : "clicks on the focused window";
    if (temper.guests)
        text += ", windows that come and go";
    if (temper.grabs)
        text += ", grabs of others";
    if (temper.monitors)
        text += ", monitors that come and go";
    if (temper.upheaval)
        text += ", upheavals";
    return text;
}

} // namespace klova::stress
