#pragma once

#include "platform/event_store.h"

#include <string_view>

namespace bridge {

// The kind of an account whose calendars come through this backend of Evolution Data Server.
SourceType sourceTypeOf(std::string_view backend);

} // namespace bridge
