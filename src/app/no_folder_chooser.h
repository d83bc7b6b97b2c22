#pragma once

#include "platform/folder_chooser.h"

namespace bridge {

// For a process without a display: there is no one to ask.
class NoFolderChooser : public FolderChooser {
public:
    Task<std::optional<std::string>> choose(FolderQuestion) override { co_return std::nullopt; }
};

} // namespace bridge
