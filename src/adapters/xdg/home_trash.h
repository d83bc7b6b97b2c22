#pragma once

#include "platform/trash.h"

#include <string>

namespace bridge {

// The Trash in the user's home folder, as the freedesktop.org Trash standard 1.0 has it. It moves, never copies: an
// item on another volume is refused with TrashOnAnotherVolume (trash_folder.h).
class HomeTrash : public Trash {
public:
    // `directory` is absolute, such as $XDG_DATA_HOME/Trash; it and what leads there are made when first needed.
    explicit HomeTrash(std::string directory) : m_directory(std::move(directory)) {}

    void moveToTrash(const TrashItem& item) override;

private:
    std::string m_directory;
};

} // namespace bridge
