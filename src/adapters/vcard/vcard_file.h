#pragma once

#include "adapters/vcard/card_reader.h"
#include "adapters/vcard/vcard.h"

#include <string>
#include <string_view>
#include <vector>

namespace bridge {

struct VCardGroup {
    std::string name;
    std::vector<size_t> members;           // which of the file's cards, each once
    std::vector<std::string> otherMembers; // UIDs of members that are not in the file, as comparableUID() gives them
};

struct VCardFile {
    std::vector<VCard> cards;       // people and organizations, each with a UID of its own, and each once
    std::vector<VCardGroup> groups; // by CATEGORIES, each name once, then the cards that are groups themselves
    std::vector<VCardFileProblem> problems;
};

// Reads a vCard file of version 2.1 (also of the many that only claim it), 3.0 or 4.0, as programs really write them. A
// card is taken whole or reported. What is read again says the same, UIDs of cards without one too. Throws
// PlatformError when nothing in it is vCard.
VCardFile readVCardFile(std::string_view bytes);

} // namespace bridge
