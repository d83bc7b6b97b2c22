#pragma once

#include "adapters/sqlite/store_schema.h"

namespace bridge {

extern const StoreSchema eventStoreSchema;

} // namespace bridge
