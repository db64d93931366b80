// One owner for everything that C libraries hand over to be freed.
#pragma once

#include <cstdlib>
#include <memory>

namespace klova::x11 {

struct FreeC {
    void operator()(void* pointer) const { std::free(pointer); }
};

/// A reply or event of xcb. A null reply is a failed request: usually a window that is gone.
template <typename T> using UniqueC = std::unique_ptr<T, FreeC>;

template <typename T> UniqueC<T> own(T* pointer) { return UniqueC<T>(pointer); }

} // namespace klova::x11
