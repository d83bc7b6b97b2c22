#pragma once

#include "bridges/iwork/iwork_application.h"

namespace bridge {

// What a script calls the format that a request asks for ("docx" is "Microsoft Word"). Case doesn't count, and "_" is
// a space. Throws AppleBridgeError malformedRequest for what the application doesn't export.
std::string_view exportType(IWorkApplication application, std::string_view format);

} // namespace bridge
