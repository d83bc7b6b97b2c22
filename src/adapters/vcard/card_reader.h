#pragma once

#include "adapters/vcard/content_line.h"

#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// What could not be taken from a file, for the user to read.
struct VCardFileProblem {
    std::string item;   // "contact “Ada Lovelace”", "contact 3", "line 17"
    std::string reason; // a sentence
    bool isLost = true; // whether the item is left out, or was taken without the part that is wrong
};

namespace vcard {

// The lines between BEGIN:VCARD and END:VCARD as they stand in the file: unfolded, of whatever version, values in their
// transfer encoding and character set.
struct WrittenCard {
    int firstLine = 0;
    std::vector<ContentLine> lines;
    std::vector<int> badLines; // numbers of those that are no content lines
};

struct WrittenCards {
    std::vector<WrittenCard> cards;
    std::vector<VCardFileProblem> problems;
};

// Reads content lines as vCard 2.1, RFC 2426 and RFC 6350 fold them. There is a reader here because none of Debian's
// libraries serves: libvformat and libvc know old versions, libbelcard 4.0 alone, and EVCard needs GLib, which an
// embedded build has not. A card inside a card, an AGENT of vCard 2.1, becomes the value of its line.
WrittenCards readCards(std::string_view bytes);

} // namespace vcard

} // namespace bridge
