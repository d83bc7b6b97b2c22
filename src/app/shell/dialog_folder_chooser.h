#pragma once

#include "platform/folder_chooser.h"

namespace bridge {

// A dialog of this program, for a desktop that has none to offer. Needs a QApplication.
class DialogFolderChooser : public FolderChooser {
public:
    Task<std::optional<std::string>> choose(FolderQuestion question) override;
};

} // namespace bridge
