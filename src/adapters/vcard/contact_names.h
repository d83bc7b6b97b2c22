#pragma once

#include "platform/contact_store.h"

#include <string>
#include <vector>

namespace bridge {

// The words of the names by which a contact is found.
std::vector<std::string> nameWordsOf(const Contact& contact);

} // namespace bridge
