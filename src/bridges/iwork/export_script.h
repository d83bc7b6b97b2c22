#pragma once

#include "bridges/iwork/iwork_application.h"

#include <string>

namespace bridge {

// What the application is told. `type` is its own word for the format; input and output are absolute paths.
std::string exportScript(IWorkApplication application, std::string_view type, const std::string& input,
                         const std::string& output);

} // namespace bridge
