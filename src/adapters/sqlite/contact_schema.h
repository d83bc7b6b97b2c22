#pragma once

#include "adapters/sqlite/store_schema.h"

namespace bridge {

extern const StoreSchema contactStoreSchema;

} // namespace bridge
