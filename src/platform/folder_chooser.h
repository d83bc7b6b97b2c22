#pragma once

#include "base/task.h"

#include <optional>
#include <string>

namespace bridge {

struct FolderQuestion {
    std::string title;
    std::string message;
    std::string confirmLabel;
};

// The platform's dialog for choosing one existing folder; the user may make a new one in it, may not choose a file nor
// several folders. It opens wherever the platform puts it.
class FolderChooser {
public:
    virtual ~FolderChooser() = default;

    // The absolute path of the chosen folder; nothing when the user cancelled or there is no one to ask.
    virtual Task<std::optional<std::string>> choose(FolderQuestion question) = 0;
};

} // namespace bridge
