// An owner for replies and events, which xcb hands over to be freed.
#pragma once

#include <cstdlib>
#include <memory>

namespace klova::rig {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T> using Owned = std::unique_ptr<T, FreeMemory>;

template <typename T> Owned<T> owned(T* memory) { return Owned<T>(memory); }

} // namespace klova::rig
