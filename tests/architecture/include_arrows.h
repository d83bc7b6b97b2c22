#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bridge::architecture {

// One #include line: the file it stands in, relative to src/, and what stands between the quotes or the brackets.
struct Include {
    std::string file;
    int line = 0;
    std::string target;
    bool isSystem = false; // in angle brackets
};

// The #include lines of a source text.
std::vector<Include> includesOf(const std::string& file, std::string_view text);

// The folder that rules apply to: "base", "bridges/files", "adapters/gio", "app".
std::string roomOf(std::string_view path);

// Which outside system a header belongs to: "standard", "posix", "linux", "libuv", "glib", "qt" ... or "unknown".
std::string systemOf(std::string_view header);

// What is wrong with an include; empty when its arrow may point there.
std::string faultOf(const Include& include);

// What is wrong with the statements of a source text that wait.
std::vector<std::string> awaitFaultsOf(const std::string& file, std::string_view text);

} // namespace bridge::architecture
