#include "adapters/gio/mount_point.h"

#include <gio/gunixmounts.h>

namespace bridge {

namespace {

bool contains(const std::string& folder, const std::string& path) {
    return path == folder || path.starts_with(folder.ends_with('/') ? folder : folder + '/');
}

} // namespace

std::string mountPointOf(const std::string& path) {
    std::string deepest = "/";
    GList* mounts = g_unix_mounts_get(nullptr);
    // By path, not by device: one volume may be mounted at several places, and a move between those fails.
    for (const GList* entry = mounts; entry; entry = entry->next) {
        const std::string place = g_unix_mount_get_mount_path(static_cast<GUnixMountEntry*>(entry->data));
        if (place.size() > deepest.size() && contains(place, path)) deepest = place;
    }
    g_list_free_full(mounts, [](gpointer mount) { g_unix_mount_free(static_cast<GUnixMountEntry*>(mount)); });
    return deepest;
}

} // namespace bridge
