// Whether a record agrees with what had to be heard.
#pragma once

#include "Listener.h"
#include "Stream.h"

#include <string>

namespace klova::stress {

/// What is wrong with the record, in words; empty where nothing is.
std::string difference(const Stream& stream, std::vector<Heard> record);

} // namespace klova::stress
