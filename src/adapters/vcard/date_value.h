#pragma once

#include "adapters/vcard/content_line.h"
#include "platform/contact_store.h"

namespace bridge::vcard {

// The day that BDAY or ANNIVERSARY names in any version's form; nothing when it is not whole or no calendar has it.
std::optional<Birthday> dayOf(const ContentLine& line);
// As vCard 4.0 writes it: 19800322 or --0322.
std::string dayValue(const Birthday& day);

// 1980-03-22T10:00:00-05:00 in the basic form that vCard 4.0 wants; other text as it is.
std::string basicForm(std::string_view dateTime);

} // namespace bridge::vcard
