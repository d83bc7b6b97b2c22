#pragma once

#include <string>

namespace bridge {

// The whole wire as an OpenAPI 3.1 document: the two endpoints, every operation's request, the results, the errors.
// Written from the operation rows and the field lists of their records.
std::string openAPIDocument();

} // namespace bridge
