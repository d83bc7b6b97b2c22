#pragma once

#include "adapters/eds/source_list.h"

namespace bridge {

// The source that the user chose under this key for new items, whether it still is there or not; or empty.
std::string chosenSource(const char* key);

// The calendar or list that the user chose for new items, or the one that is there from the start.
std::string defaultSource(EntityType type, const SourceList& list);

} // namespace bridge
