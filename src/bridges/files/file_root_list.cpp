#include "bridges/files/file_root_list.h"

#include "base/apple_bridge_error.h"
#include "base/platform_error.h"
#include "base/text.h"
#include "base/uuid.h"
#include "bridges/files/path_confinement.h"

#include <algorithm>

namespace bridge {

namespace {

std::string lastComponent(const std::string& path) {
    const auto names = splitPath(path);
    return names.empty() ? "/" : repairUTF8(names.back());
}

} // namespace

FileRootList::FileRootList(UserDefaults& defaults, Bookmarks& bookmarks,
                           Published<std::vector<AuthorizedFileRootDescriptor>>& shown)
    : m_defaults(defaults), m_bookmarks(bookmarks), m_shown(shown) {
    load();
    rebuild();
}

std::optional<AuthorizedFileRootDescriptor> FileRootList::add(const std::string& path) {
    StoredFileRoot added;
    try {
        added = {makeUUID(), lastComponent(path), {m_bookmarks.create(path)}};
    } catch (const PlatformError&) {
        return std::nullopt;
    }
    m_stored.push_back(added);
    save();
    rebuild();

    const auto found = std::ranges::find(m_shown.get(), added.id, &AuthorizedFileRootDescriptor::id);
    if (found == m_shown.get().end()) return std::nullopt;
    return *found;
}

void FileRootList::remove(const std::string& id) {
    const auto removed = std::erase_if(m_stored, [&](const StoredFileRoot& root) { return root.id == id; });
    if (removed == 0) throw AppleBridgeError::resourceNotFound(id);
    save();
    rebuild();
}

const StoredFileRoot& FileRootList::find(const std::string& id) const {
    const auto found = std::ranges::find(m_stored, id, &StoredFileRoot::id);
    if (found == m_stored.end()) throw AppleBridgeError::resourceNotFound(id);
    return *found;
}

void FileRootList::replaceBookmark(const std::string& id, std::string bookmark) {
    const auto found = std::ranges::find(m_stored, id, &StoredFileRoot::id);
    if (found == m_stored.end()) throw AppleBridgeError::resourceNotFound(id);
    found->bookmark.value = std::move(bookmark);
    save();
}

void FileRootList::load() {
    const auto data = m_defaults.data(FileRootList::defaultsKey);
    if (!data) return;
    try {
        m_stored = decode<std::vector<StoredFileRoot>>(parseJSON(*data));
    } catch (const JSONError&) {
    } catch (const DecodingError&) {
    }
}

void FileRootList::save() {
    m_defaults.setData(FileRootList::defaultsKey, encodeJSON(m_stored));
}

void FileRootList::rebuild() {
    std::vector<AuthorizedFileRootDescriptor> roots;
    for (const auto& stored : m_stored) {
        try {
            roots.push_back({stored.id, stored.name, m_bookmarks.resolve(stored.bookmark.value).path});
        } catch (const PlatformError&) {
            // Kept: the volume may only be away for now.
        }
    }
    m_shown.set(std::move(roots));
}

} // namespace bridge
