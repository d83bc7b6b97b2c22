#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bridge {

struct ImportOptions {
    bool help = false;
    std::optional<std::string> profile; // the folder of another profile than the user's
    std::vector<std::string> files;
};

// A word that can't be understood.
class ImportUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws ImportUsageError.
ImportOptions readImportOptions(const std::vector<std::string>& words);
extern const char* const importUsage;
extern const char* const importHelp;

} // namespace bridge
