#pragma once

#include "adapters/eds/source_list.h"

namespace bridge {

// The calendar or list that the user chose for new items, or the one that is there from the start.
std::string defaultSource(EntityType type, const SourceList& list);

} // namespace bridge
