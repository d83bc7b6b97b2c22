#pragma once

#include "base/published.h"
#include "bridges/files/file_records.h"
#include "platform/bookmarks.h"
#include "platform/user_defaults.h"

namespace bridge {

// The folders that the user allowed, in the order in which they were added, kept in the user defaults as one JSON
// array. Main thread only.
class FileRootList {
public:
    static constexpr std::string_view defaultsKey = "authorizedFileRoots.v1";

    // What is stored but unreadable counts as no folders; the next change overwrites it. Opens nothing.
    // `shown` gets one descriptor for each folder whose bookmark could be resolved when the list was last made.
    FileRootList(UserDefaults& defaults, Bookmarks& bookmarks,
                 Published<std::vector<AuthorizedFileRootDescriptor>>& shown);

    // Nothing when no bookmark could be made for the folder, or none that resolves (that one is kept all the same).
    // A folder may be added twice.
    std::optional<AuthorizedFileRootDescriptor> add(const std::string& path);

    // Both throw AppleBridgeError resourceNotFound when no folder has the id, whether its bookmark resolves or not.
    void remove(const std::string& id);
    const StoredFileRoot& find(const std::string& id) const;

    // The folder keeps its place, id and name; what is shown stays as it is.
    void replaceBookmark(const std::string& id, std::string bookmark);

    // Looks anew which folders are there.
    void rebuild();

private:
    void load();
    void save();

    UserDefaults& m_defaults;
    Bookmarks& m_bookmarks;
    Published<std::vector<AuthorizedFileRootDescriptor>>& m_shown;
    std::vector<StoredFileRoot> m_stored;
};

} // namespace bridge
