#pragma once

#include "platform/contact_store.h"

#include <string>

namespace bridge {

// The address as the country it is in writes it, line by line, and the country's name last as it is given. The country
// is told by its code, else by its name, and is the user's own where neither says anything. Nothing of the address is
// left out: a part that the country writes nowhere has a line of its own. No line is empty.
std::string formatPostalAddress(const PostalAddress& address);

} // namespace bridge
