#pragma once

#include "bridges/contacts/contact_requests.h"

namespace bridge {

// The query as names are compared with it: without case, accents and white space at its ends. Empty for "everybody".
std::string normalizedQuery(const SearchContactsRequest& request);

// Whether a name of the contact holds the normalized query, anywhere: the given, middle and family name, the nickname
// and the organization, one after the other with a single space between each and the next. One that is empty has its
// spaces too.
bool nameContains(const Contact& contact, std::string_view normalizedQuery);

// 1...500
size_t searchLimit(const SearchContactsRequest& request);

} // namespace bridge
