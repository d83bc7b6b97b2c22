#include "app/helper_program.h"

#include <filesystem>

namespace bridge {

namespace {

// `kind` is a folder beside the one of the running program, or of the build.
std::string installedOrBuilt(std::string_view kind, std::string_view name) {
    std::error_code problem;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", problem);
    const auto installed = self.parent_path().parent_path() / kind / "brindlefox-apple-bridge" / name;
    if (!problem && std::filesystem::exists(installed, problem)) return installed.string();
    return (std::filesystem::path(BRIDGE_BUILT) / kind / name).string();
}

} // namespace

std::string ownProgram() {
    std::error_code problem;
    auto path = std::filesystem::read_symlink("/proc/self/exe", problem).string();
    constexpr std::string_view mark = " (deleted)";
    if (path.ends_with(mark) && !std::filesystem::exists(path, problem)) path.resize(path.size() - mark.size());
    return path;
}

std::string helperProgram(std::string_view name) {
    return installedOrBuilt("libexec", name);
}

std::string libraryFile(std::string_view name) {
    return installedOrBuilt("lib", name);
}

std::string dataFile(std::string_view name) {
    return installedOrBuilt("share", name);
}

} // namespace bridge
