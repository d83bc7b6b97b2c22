#pragma once

#include <gio/gio.h>
#include <memory>

namespace bridge {

struct GLibRelease {
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
    void operator()(char* text) const { g_free(text); }
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};

// Owns what GLib frees in its own way.
template <typename T> using GLibPointer = std::unique_ptr<T, GLibRelease>;

struct GObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};

// Owns one reference.
template <typename T> using GObjectPointer = std::unique_ptr<T, GObjectRelease>;

} // namespace bridge
