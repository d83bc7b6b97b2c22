#include "adapters/posix/posix_bookmarks.h"

#include "adapters/posix/folder_mark.h"
#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>

namespace bridge {

namespace {

struct BookmarkData {
    int64_t version = 1;
    Bytes path; // need not be UTF-8
    FolderMark folder;

    static constexpr auto fields() {
        return std::tuple{required("version", &BookmarkData::version), required("path", &BookmarkData::path),
                          required("folder", &BookmarkData::folder)};
    }
};
static_assert(listsEveryMember<BookmarkData>());

constexpr int64_t currentVersion = 1;
// A folder of more entries than this is not searched to its end.
constexpr int maximumSiblings = 10'000;

struct Free {
    void operator()(char* text) const { std::free(text); }
};
struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

std::string canonicalPath(const std::string& path) {
    if (!path.starts_with('/') || path.find('\0') != std::string::npos)
        throw PlatformError("The folder's path is not absolute.");
    const std::unique_ptr<char, Free> canonical(realpath(path.c_str(), nullptr));
    if (!canonical) throw PlatformError::fromErrno("The folder could not be found", errno);
    return canonical.get();
}

std::optional<MarkedFolder> markAt(const std::string& path) {
    const FileDescriptor folder(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder) return std::nullopt;
    return markFolder(folder.get(), {});
}

BookmarkData read(const std::string& bookmark) {
    try {
        auto data = decode<BookmarkData>(parseJSON(bookmark));
        const auto& path = data.path.value;
        if (data.version == currentVersion && path.starts_with('/') && path.find('\0') == std::string::npos)
            return data;
    } catch (const JSONError&) {
    } catch (const DecodingError&) {
    }
    throw PlatformError("This is no bookmark of a folder.");
}

// Where the same folder is now among the entries of the folder it was in.
std::optional<ResolvedBookmark> findSibling(const std::string& parent, const FolderMark& wanted) {
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(parent.c_str()));
    if (!directory) return std::nullopt;
    for (int count = 0; count < maximumSiblings; ++count) {
        const dirent* entry = readdir(directory.get());
        if (!entry) break;
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || (entry->d_type != DT_DIR && entry->d_type != DT_UNKNOWN)) continue;
        const auto found = markFolder(dirfd(directory.get()), name);
        if (found && compare(wanted, found->mark) != SameFolder::no)
            return ResolvedBookmark{(parent == "/" ? "" : parent) + "/" + name, true, found->identity};
    }
    return std::nullopt;
}

} // namespace

std::string PosixBookmarks::create(const std::string& path) {
    const auto canonical = canonicalPath(path);
    // Readable, not only there: a folder that can't be opened is of no use.
    const FileDescriptor folder(open(canonical.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const auto found = folder ? markFolder(folder.get(), {}) : std::nullopt;
    if (!found) throw PlatformError::fromErrno("The folder could not be opened", errno);
    return encodeJSON(BookmarkData{currentVersion, {canonical}, found->mark});
}

ResolvedBookmark PosixBookmarks::resolve(const std::string& bookmark) {
    const auto data = read(bookmark);
    const auto& path = data.path.value;
    const auto found = markAt(path);
    if (!found && errno == EACCES) throw PlatformError::fromErrno("The folder could not be opened", EACCES);
    if (found) {
        const auto same = compare(data.folder, found->mark);
        if (same != SameFolder::no) return {path, same == SameFolder::afterRemount, found->identity};
    }
    if (auto moved = findSibling(path.substr(0, std::max<size_t>(path.rfind('/'), 1)), data.folder)) return *moved;
    throw PlatformError("The folder " + path + " was moved or replaced; add it again.");
}

std::shared_ptr<void> PosixBookmarks::startAccessing(const std::string&) {
    return nullptr;
}

} // namespace bridge
