#include "app/helper_program.h"

#include <filesystem>

namespace bridge {

namespace {

// As Linux tells it: under the name that it was started by, and with this after it when that is another file's now.
constexpr std::string_view deleted = " (deleted)";

std::string runningProgram() {
    std::error_code problem;
    return std::filesystem::read_symlink("/proc/self/exe", problem).string();
}

bool isDeleted(const std::string& path) {
    std::error_code problem;
    return path.ends_with(deleted) && !std::filesystem::exists(path, problem);
}

// `kind` is a folder beside the one of the running program, or of the build.
std::string installedOrBuilt(std::string_view kind, std::string_view name) {
    const std::filesystem::path self = runningProgram();
    const auto installed = self.parent_path().parent_path() / kind / "brindlefox-apple-bridge" / name;
    std::error_code problem;
    if (!self.empty() && std::filesystem::exists(installed, problem)) return installed.string();
    return (std::filesystem::path(BRIDGE_BUILT) / kind / name).string();
}

} // namespace

std::string ownProgram() {
    auto path = runningProgram();
    if (isDeleted(path)) path.resize(path.size() - deleted.size());
    return path;
}

bool isOwnProgramReplaced() {
    return isDeleted(runningProgram());
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
