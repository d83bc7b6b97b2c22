#pragma once

#include "base/platform_error.h"
#include "platform/bookmarks.h"

namespace bridge {

// Bookmarks that grow stale or fail when told, and count who has access.
class FailingBookmarks : public Bookmarks {
public:
    explicit FailingBookmarks(Bookmarks& real) : m_real(real) {}

    bool failsToCreate = false;
    bool failsToResolve = false;
    bool isStale = false;
    int created = 0;
    int accesses = 0;  // ever begun
    int accessing = 0; // at the moment

    std::string create(const std::string& path) override {
        if (failsToCreate) throw PlatformError("No bookmark can be made.");
        ++created;
        return m_real.create(path);
    }
    ResolvedBookmark resolve(const std::string& bookmark) override {
        if (failsToResolve) throw PlatformError("The bookmark can't be resolved.");
        auto resolved = m_real.resolve(bookmark);
        resolved.isStale = resolved.isStale || isStale;
        return resolved;
    }
    std::shared_ptr<void> startAccessing(const std::string&) override {
        ++accesses;
        ++accessing;
        return std::shared_ptr<void>(this, [](void* self) { --static_cast<FailingBookmarks*>(self)->accessing; });
    }

private:
    Bookmarks& m_real;
};

} // namespace bridge
