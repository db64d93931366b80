// All streams under one window manager.
#pragma once

#include "Options.h"

#include <filesystem>

namespace klova::stress {

/// Says on standard output how it goes. Whether everything was as it should.
bool run(const Options& options, const std::string& manager, const std::filesystem::path& klova);

} // namespace klova::stress
