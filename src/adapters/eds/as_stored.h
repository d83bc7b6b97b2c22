#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/call.h"
#include "adapters/eds/item_identifier.h"

namespace bridge {

// What the service made of the item. It is saved by now, so what can't be read again is answered as it was written.
template <typename Item>
Item asStored(CalendarClient& client, const Call& call, const Item& written,
              std::optional<Item> (*read)(CalendarClient&, const Call&, const ItemIdentifier&)) {
    try {
        const auto identifier = ItemIdentifier::parse(written.identifier);
        auto stored = identifier ? read(client, call, *identifier) : std::nullopt;
        return stored ? std::move(*stored) : written;
    } catch (const PlatformError&) {
        return written;
    }
}

} // namespace bridge
