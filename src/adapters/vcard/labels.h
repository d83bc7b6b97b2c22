#pragma once

#include "adapters/vcard/content_line.h"
#include "platform/contact_store.h"

#include <vector>

namespace bridge::vcard {

// The phone numbers or e-mail addresses among the lines, with their labels, in their order. A label is told by TYPE, or
// by an X-ABLabel of the same group when it is a word of the user's own.
std::vector<LabeledValue> labeledValues(const std::vector<ContentLine>& lines, std::string_view property);

// Makes them these. A line whose value stays keeps its place among them and its other parameters.
void setLabeledValues(std::vector<ContentLine>& lines, std::string_view property,
                      const std::vector<LabeledValue>& wanted);

} // namespace bridge::vcard
