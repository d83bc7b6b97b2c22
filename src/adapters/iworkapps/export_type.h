#pragma once

#include "adapters/iworkapps/language.h"

#include <string>
#include <vector>

namespace bridge::iworkapps {

// The formats of all three applications as constants of a dictionary. Each application knows the words of the others,
// to say that they are not its own.
std::vector<std::string> exportConstants();

// What "export … as" means to the application of that kind. Throws -1700 for what is no export format, and -10000 for
// one of another application.
ExportFormat exportFormat(DocumentKind kind, const Value& constant);

} // namespace bridge::iworkapps
