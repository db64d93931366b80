// Whether panels move what they show.
#pragma once

namespace klova {

/// Whether the person asked their desktop for less motion. Ask anew at each animation.
bool wantsLessMotion();

} // namespace klova
