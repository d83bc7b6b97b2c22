#pragma once

#include "adapters/ical/file_components.h"
#include "adapters/ical/zones.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge {

// Looks at one event or task of a file on its own. What is wrong with it goes to `problems`; whether it can be taken
// all the same is the answer.
bool checkFileItem(const FileComponent& component, const Zones& zones, std::vector<CalendarFileProblem>& problems);

} // namespace bridge
