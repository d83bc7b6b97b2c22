#pragma once

#include "adapters/vcard/card_reader.h"

#include <string>
#include <vector>

namespace bridge::vcard {

// The lines of a card as vCard 4.0 writes them, in UTF-8, without BEGIN, VERSION and END, whichever version it was
// written in. What only older versions have is said in the way of 4.0 (PHOTO as a data URI, PREF, LABEL with its
// address, AGENT as a RELATED), what nobody standardized stays as it is, and empty lines of older versions go. `faults`
// gets a sentence for each part that can't be taken whole.
std::vector<ContentLine> upgraded(const WrittenCard& card, std::vector<std::string>& faults);

} // namespace bridge::vcard
