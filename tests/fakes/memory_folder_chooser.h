#pragma once

#include "platform/folder_chooser.h"

#include <vector>

namespace bridge {

// A user who always gives the same answer, and remembers what the dialog said.
class MemoryFolderChooser : public FolderChooser {
public:
    std::optional<std::string> answer;
    std::vector<FolderQuestion> questions;

    Task<std::optional<std::string>> choose(FolderQuestion question) override {
        questions.push_back(std::move(question));
        co_return answer;
    }
};

} // namespace bridge
