#pragma once

#include "base/json_value.h"

namespace bridge {

// JSON for people: a member or element a line, two spaces a level, the names of objects in ascending byte order.
std::string prettyJSON(const JSONValue& value);

} // namespace bridge
