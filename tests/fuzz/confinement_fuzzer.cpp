#include "base/apple_bridge_error.h"
#include "base/platform_error.h"
#include "bridges/files/path_confinement.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

namespace fs = std::filesystem;

// A folder with links of every kind in it, beside a folder that is not to be reached.
class Tree {
public:
    Tree() {
        fs::create_directories(root / "a/b");
        fs::create_directories(outside / "a/b");
        fs::create_directories(m_folder / "rootlike");
        putFile(root / "a/file", "inside");
        putFile(outside / "file", "outside");
        const std::pair<const char*, fs::path> links[] = {
            {"in", "a/b"},
            {"here", "."},
            {"back", "../root"},
            {"out", "../outside"},
            {"like", "../rootlike"},
            {"up", ".."},
            {"a/up", "../.."},
            {"a/b/out", "../../out"},
            {"round", "about"},
            {"about", "round"},
            {"deeper", "deeper/deeper"},
            {"absolute", root / "a"},
            {"away", outside},
            {"top", "/"},
            {"dangling", "missing"},
            {"lost", "../outside/missing"},
            {"ghost", "missing/../out"},
            {"throughFile", "a/file/../../out"},
        };
        for (const auto& [name, target] : links)
            fs::create_symlink(target, root / name);
    }

private:
    TemporaryFolder m_folder;

public:
    const fs::path root = m_folder / "root";
    const fs::path outside = m_folder / "outside";
};

// Each byte stands for a name of the tree.
std::string pathOfNames(std::string_view bytes) {
    static constexpr std::array names{"a",        "b",           "file",  "in",       "here",   "back", "out",
                                      "like",     "up",          "round", "absolute", "away",   "top",  "deeper",
                                      "dangling", "lost",        "ghost", "about",    "root",   ".",    "..",
                                      "",         "throughFile", "new",   "...",      "outside"};
    std::string path;
    for (const char byte : bytes) {
        if (!path.empty()) path += '/';
        path += names[static_cast<unsigned char>(byte) % names.size()];
    }
    return path;
}

void mustBeInside(const Tree& tree, const ConfinedPath& place, const std::string& path, PathMayBeMissing missing) {
    must(place.requested == path);
    auto reached = tree.root;
    for (const auto& name : place.names) {
        must(!name.empty() && name != "." && name != "..");
        must(name.find('/') == std::string::npos && name.find('\0') == std::string::npos);
        reached /= name;
        std::error_code failure;
        must(!fs::is_symlink(fs::symlink_status(reached, failure)));
    }
    if (missing == PathMayBeMissing::no) must(fs::exists(fs::symlink_status(reached)));
}

} // namespace

// The first byte says whether the place may be missing (1) and whether the others stand for names of the tree (2).
void fuzz(std::string_view input) {
    static const Tree tree;
    if (input.empty()) return;
    const auto missing = input[0] & 1 ? PathMayBeMissing::yes : PathMayBeMissing::no;
    const std::string path = input[0] & 2 ? pathOfNames(input.substr(1)) : std::string(input.substr(1));
    try {
        const auto place = resolveConfinedPath(tree.root, path, missing);
        const auto names = splitPath(path);
        must(std::ranges::find(names, "..") == names.end() && !path.starts_with('/'));
        mustBeInside(tree, place, path, missing);
    } catch (const AppleBridgeError& error) {
        using Case = AppleBridgeError::Case;
        must(error.kind() == Case::unsafePath ||
             (error.kind() == Case::resourceNotFound && missing == PathMayBeMissing::no));
    } catch (const PlatformError& error) {
        must(*error.what() != '\0');
    }
}

} // namespace bridge
