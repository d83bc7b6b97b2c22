#pragma once

#include "adapters/iworkapps/language.h"

namespace bridge::iworkapps {

// The words that all three applications have, and what one of them adds to a document; more classes, commands and
// constants can be put beside them.
Dictionary commonTerms(DocumentKind kind, const std::vector<std::string>& documentProperties,
                       const std::vector<std::string>& documentElements);

} // namespace bridge::iworkapps
