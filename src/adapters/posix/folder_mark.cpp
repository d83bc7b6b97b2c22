#include "adapters/posix/folder_mark.h"

#include "base/file_descriptor.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace bridge {

namespace {

std::optional<Bytes> readHandle(int folder) {
    struct statfs volume;
    // A user-space file system counts its handles afresh at each mount.
    if (fstatfs(folder, &volume) != 0 || volume.f_type == FUSE_SUPER_MAGIC) return std::nullopt;

    alignas(file_handle) std::array<std::byte, sizeof(file_handle) + MAX_HANDLE_SZ> space{};
    auto* handle = reinterpret_cast<file_handle*>(space.data());
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    if (name_to_handle_at(folder, "", handle, &mount, AT_EMPTY_PATH) != 0) return std::nullopt;
    Bytes bytes;
    bytes.value.assign(reinterpret_cast<const char*>(&handle->handle_type), sizeof handle->handle_type);
    bytes.value.append(reinterpret_cast<const char*>(handle->f_handle), handle->handle_bytes);
    return bytes;
}

template <typename T> bool differ(const std::optional<T>& then, const std::optional<T>& now) {
    return then && now && *then != *now;
}

} // namespace

SameFolder compare(const FolderMark& then, const FolderMark& now) {
    if (then.inode != now.inode || differ(then.birth, now.birth) || differ(then.handle, now.handle))
        return SameFolder::no;
    if (then.device == now.device) return SameFolder::yes;
    // Device numbers are handed out at each start; only these say that it is the same volume.
    const bool proven = (then.birth && now.birth) || (then.handle && now.handle);
    return proven ? SameFolder::afterRemount : SameFolder::no;
}

std::optional<MarkedFolder> markFolder(int folder, const std::string& name) {
    const FileDescriptor entry(
        openat(folder, name.empty() ? "." : name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct statx status;
    if (!entry || statx(entry.get(), "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return std::nullopt;

    const auto device = makedev(status.stx_dev_major, status.stx_dev_minor);
    MarkedFolder found{{std::to_string(device), std::to_string(status.stx_ino), std::nullopt, readHandle(entry.get())},
                       {device, status.stx_ino}};
    if (status.stx_mask & STATX_BTIME)
        found.mark.birth = std::to_string(status.stx_btime.tv_sec) + "." + std::to_string(status.stx_btime.tv_nsec);
    return found;
}

} // namespace bridge
