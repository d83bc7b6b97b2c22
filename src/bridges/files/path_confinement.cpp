#include "bridges/files/path_confinement.h"

#include "base/apple_bridge_error.h"
#include "base/platform_error.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge {

namespace {

constexpr int maximumLinks = 40; // as many as the kernel follows

std::optional<std::string> readLink(const std::string& path) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return std::nullopt;
    target.resize(static_cast<size_t>(length));
    return target;
}

bool isMissing(int code) {
    return code == ENOENT || code == ENOTDIR || code == ENAMETOOLONG;
}

// Walks from the root of the file system or of the user's folder, one name after another.
class LinkResolver {
public:
    LinkResolver(std::vector<std::string> start, std::vector<std::string> pending)
        : m_reached(std::move(start)), m_pending(pending.rbegin(), pending.rend()) {}

    // False when the links go round in circles.
    bool resolve() {
        while (!m_pending.empty()) {
            const std::string name = std::move(m_pending.back());
            m_pending.pop_back();
            if (!step(name)) return false;
        }
        return true;
    }

    const std::vector<std::string>& reached() const { return m_reached; }
    bool exists() const { return m_exists; }

private:
    static constexpr size_t unlimited = SIZE_MAX;

    bool step(const std::string& name) {
        if (name == ".") return true;
        if (name == "..") { // out of a link; the names reached are free of links
            if (!m_reached.empty()) m_reached.pop_back();
            return true;
        }
        const bool belowMissing = m_reached.size() > m_present;
        m_reached.push_back(name);
        if (belowMissing) return true;

        const std::string path = "/" + joinPath(m_reached);
        struct stat status;
        if (path.size() >= PATH_MAX || lstat(path.c_str(), &status) != 0) {
            if (path.size() < PATH_MAX && !isMissing(errno))
                throw PlatformError::fromErrno("The path could not be examined", errno);
            m_exists = false;
            m_present = m_reached.size() - 1;
            return true;
        }
        m_present = unlimited;
        return !S_ISLNK(status.st_mode) || follow(path);
    }

    bool follow(const std::string& link) {
        if (++m_links > maximumLinks) return false;
        const auto target = readLink(link);
        std::string name = std::move(m_reached.back());
        m_reached.pop_back();
        if (!target) { // no longer a link: look again what it is
            m_pending.push_back(std::move(name));
            return true;
        }
        if (target->starts_with('/')) m_reached.clear();
        const auto names = splitPath(*target);
        m_pending.insert(m_pending.end(), names.rbegin(), names.rend());
        return true;
    }

    std::vector<std::string> m_reached;
    std::vector<std::string> m_pending; // the next one last
    // How many of the names reached are there. A link can lead through something missing and up again, to places that
    // have to be looked at again.
    size_t m_present = unlimited;
    bool m_exists = true; // the whole way so far
    int m_links = 0;
};

bool leadsUpwards(const std::vector<std::string>& names) {
    return std::ranges::find(names, "..") != names.end();
}

} // namespace

std::vector<std::string> splitPath(std::string_view path) {
    std::vector<std::string> names;
    while (!path.empty()) {
        const size_t end = std::min(path.find('/'), path.size());
        if (end > 0) names.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

std::string joinPath(std::span<const std::string> names) {
    std::string path;
    for (const auto& name : names) {
        if (!path.empty()) path += '/';
        path += name;
    }
    return path;
}

std::string appendToPath(std::string folder, std::string_view relative) {
    if (relative.empty()) return folder;
    if (!folder.ends_with('/')) folder += '/';
    return folder.append(relative);
}

std::string ConfinedPath::relative() const {
    return joinPath(names);
}

bool ConfinedPath::isInside(const ConfinedPath& folder) const {
    return names.size() > folder.names.size() && std::equal(folder.names.begin(), folder.names.end(), names.begin());
}

ConfinedPath resolveConfinedPath(const std::string& canonicalRoot, const std::string& path, PathMayBeMissing missing) {
    if (path.starts_with('/') || path.find('\0') != std::string::npos) throw AppleBridgeError::unsafePath(path);
    const auto names = splitPath(path);
    if (leadsUpwards(names)) throw AppleBridgeError::unsafePath(path);

    const auto root = splitPath(canonicalRoot);
    LinkResolver resolver(root, names);
    const auto& reached = resolver.reached();
    const auto isOutside = [&] {
        return reached.size() < root.size() || !std::equal(root.begin(), root.end(), reached.begin());
    };
    bool resolved = false;
    try {
        resolved = resolver.resolve();
    } catch (const PlatformError&) {
        // What stands in the way outside the root is nobody's business.
        if (isOutside()) throw AppleBridgeError::unsafePath(path);
        throw;
    }
    if (isOutside()) throw AppleBridgeError::unsafePath(path);
    if (!resolved && missing == PathMayBeMissing::no) throw AppleBridgeError::resourceNotFound(path);
    if (!resolved) throw PlatformError::fromErrno("The path can't be used", ELOOP);
    if (!resolver.exists() && missing == PathMayBeMissing::no) throw AppleBridgeError::resourceNotFound(path);
    if (joinPath(reached).size() + 1 >= PATH_MAX)
        throw PlatformError::fromErrno("The path can't be used", ENAMETOOLONG);
    return {path, {reached.begin() + static_cast<std::ptrdiff_t>(root.size()), reached.end()}};
}

} // namespace bridge
