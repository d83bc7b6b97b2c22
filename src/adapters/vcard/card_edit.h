#pragma once

#include "platform/contact_store.h"

#include <string>

namespace bridge {

// For stores that keep vCard 3.0 (RFC 2426), which change nothing in a card but what they are asked to.

// The card with the fields in which `contact` differs from what it describes, postal addresses and the image excepted.
// A card of whatever version stays of that version, and every other line to the letter what it was. Throws
// PlatformError when the text is no vCard.
std::string editedCard(const std::string& text, const Contact& contact);

// A new card of version 3.0 with every field, postal addresses too.
std::string newCard(const Contact& contact, const std::string& uid);

} // namespace bridge
