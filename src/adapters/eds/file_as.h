#pragma once

#include "platform/contact_store.h"

#include <string>

namespace bridge {

// The card with another X-EVOLUTION-FILE-AS, by which programs of the desktop show and sort a contact: made anew when
// it was made of names that have changed, left when the user chose something else.
std::string refiledCard(const std::string& text, const Contact& before, const Contact& after);

} // namespace bridge
