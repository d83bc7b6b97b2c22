#pragma once

#include <string_view>

namespace bridge {

enum class IWorkApplication { pages, numbers, keynote };

// As a request names it, in upper or lower case. Throws AppleBridgeError malformedRequest for any other name.
IWorkApplication iworkApplication(std::string_view name);

// As the user and scripts know it: "Keynote".
std::string_view displayName(IWorkApplication application);

// What the names of its documents end with, without the full stop: "key".
std::string_view documentExtension(IWorkApplication application);

} // namespace bridge
