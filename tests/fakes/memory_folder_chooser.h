#pragma once

#include "base/platform_error.h"
#include "platform/folder_chooser.h"
#include "tests/base/gate.h"

#include <vector>

namespace bridge {

// A user who always gives the same answer, at once or when the gate opens, and remembers what the dialog said.
class MemoryFolderChooser : public FolderChooser {
public:
    std::optional<std::string> answer;
    bool fails = false;
    bool waits = false;
    Gate answered;
    std::vector<FolderQuestion> questions;

    Task<std::optional<std::string>> choose(FolderQuestion question) override {
        questions.push_back(std::move(question));
        if (fails) throw PlatformError("The dialog can't be shown.");
        if (waits) co_await answered.opened();
        co_return answer;
    }
};

} // namespace bridge
