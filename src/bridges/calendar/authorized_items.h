#pragma once

#include "bridges/calendar/containers.h"

namespace bridge {

inline const std::string& containerOf(const CalendarEvent& event) {
    return event.calendarID;
}
inline const std::string& containerOf(const Reminder& reminder) {
    return reminder.listID;
}

// The events, or the reminders, that may be changed, one at a time each. Holding one up holds up no other: the account
// of another may be answering while this one's is not.
template <typename Item> class AuthorizedItems {
public:
    struct Held {
        KeyedMutex::Guard guard;
        Item item;
    };

    AuthorizedItems(EventStore& store, const Containers& containers) : m_store(store), m_containers(containers) {}

    // The item as it is once nobody else is changing it; nobody else will while the answer lives. Throws
    // AppleBridgeError when there is none of this kind, or its container is not allowed.
    Task<Held> forChange(std::string identifier) {
        auto item = co_await find(identifier);
        while (true) {
            const auto key = keyOf(item);
            auto guard = co_await m_changing.lock(key);
            // While we waited it may have changed, moved to another container or gone.
            auto again = co_await find(identifier);
            if (keyOf(again) == key) {
                Held held{std::move(guard), std::move(again)};
                co_return held;
            }
            item = std::move(again);
        }
    }

private:
    // Occurrences of one series share what is stored, so they are changed one after the other.
    static std::string keyOf(const Item& item) {
        return containerOf(item) + '\0' + item.externalIdentifier.value_or(item.identifier);
    }

    Task<Item> find(std::string identifier) {
        auto found = co_await m_store.item(identifier);
        auto* item = found ? std::get_if<Item>(&*found) : nullptr;
        if (!item) throw m_containers.kind().itemNotFound(identifier);
        m_containers.requireAllowed(containerOf(*item));
        co_return std::move(*item);
    }

    EventStore& m_store;
    const Containers& m_containers;
    KeyedMutex m_changing;
};

} // namespace bridge
