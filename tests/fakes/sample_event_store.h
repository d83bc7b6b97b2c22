#pragma once

#include "tests/fakes/memory_event_store.h"

namespace bridge {

// The calendars and reminder lists of one user: two accounts that can be written, one that can't.
class SampleEventStore : public MemoryEventStore {
public:
    SampleEventStore() {
        const auto home = addSource("home", "Home");
        const auto work = addSource("work", "apple trees ltd", SourceType::calDAV);
        const auto feeds = addSource("feeds", "Feeds", SourceType::subscribed);
        add(EntityType::event, "personal", "Personal", home);
        add(EntityType::event, "team", "Team", work);
        add(EntityType::event, "holidays", "Holidays", feeds, false);
        add(EntityType::reminder, "errands", "Errands", home);
        add(EntityType::reminder, "projects", "Projects", work);
        add(EntityType::reminder, "ideas", "Ideas of others", feeds, false);
    }
};

} // namespace bridge
