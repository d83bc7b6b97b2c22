#pragma once

#include "adapters/vcard/content_line.h"
#include "platform/contact_store.h"

namespace bridge::vcard {

// ADR (RFC 6350, 6.3.1, with the districts of RFC 9554). An apartment and a post office box are lines of the street.
PostalAddress addressOf(const ContentLine& line);
ContentLine addressLine(const PostalAddress& address);

} // namespace bridge::vcard
