// Owners for what GLib hands over.
#pragma once

#include <glib.h>
#include <memory>

namespace klova {

struct FreeG {
    void operator()(char* text) const { g_free(text); }
    void operator()(char** texts) const { g_strfreev(texts); }
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};

template <typename T> using UniqueG = std::unique_ptr<T, FreeG>;

template <typename T> UniqueG<T> own(T* object) { return UniqueG<T>(object); }

} // namespace klova
