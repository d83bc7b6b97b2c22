#pragma once

#include "adapters/iworkapps/office_document.h"

namespace bridge::iworkapps {

// The parameters of commands that several commands have. What is of the wrong kind throws -1700.

// Throws -1701 when it is missing.
const Value& required(const Command& command, std::string_view label);
std::optional<std::string> optionalPath(const Command& command, std::string_view label);
// What "saving" says; yes when there is only a file to save in, ask when there is nothing.
OfficeDocument::Saving savingOf(const Command& command);
// "with properties", nullptr when there are none.
const Record* recordParameter(const Command& command);

} // namespace bridge::iworkapps
