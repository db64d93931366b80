// The trays of the virtual desktop, and what reads their answers.
#pragma once

#include "desktop/Trays.h"

#include <regex>
