#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

enum class PathMayBeMissing { no, yes };

// A path of a request, resolved: the names that lead from the canonical root to the place, free of links, "." and ".."
// at the moment of the look. Only an opinion by the time it is used; folder_access.h holds the file system to it.
struct ConfinedPath {
    std::string requested; // as the client wrote it, for messages
    std::vector<std::string> names;

    bool isRoot() const { return names.empty(); }
    const std::string& name() const { return names.back(); }
    std::span<const std::string> parent() const { return std::span(names).first(names.size() - 1); }
    std::string relative() const; // names joined by "/"
    bool operator==(const ConfinedPath& other) const { return names == other.names; }
    // Lies somewhere below `folder`, not at it.
    bool isInside(const ConfinedPath& folder) const;
};

// The rule that keeps every operation inside its root. `path` is relative to `canonicalRoot`, an absolute path free of
// links. Links on the way are followed as far as the path exists, wherever they lead, and the place they lead to must
// be the root or lie in it; what is missing stays as written.
//
// Throws AppleBridgeError: unsafePath for an absolute path, one with a ".." or a zero byte and one that leads outside;
// resourceNotFound when nothing is there, or links go round in circles, and `missing` is no. Throws PlatformError when
// the way can't be examined, is too long to be any path, or goes round in circles and may be missing.
ConfinedPath resolveConfinedPath(const std::string& canonicalRoot, const std::string& path, PathMayBeMissing missing);

std::vector<std::string> splitPath(std::string_view path); // without empty pieces
std::string joinPath(std::span<const std::string> names);
std::string appendToPath(std::string folder, std::string_view relative);

} // namespace bridge
