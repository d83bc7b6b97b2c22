#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/call.h"

#include <functional>

namespace bridge {

// What moves an item out of its calendar, and how to see that it is out.
struct Removal {
    std::function<void(GCancellable*)> remove;
    std::function<bool(GCancellable*)> isDone;
};

// Adds the item to `target`, then removes it where it was. When that fails the copy is taken back; when nobody can say
// whether it failed the copy stays, for an item found twice is better than one lost. Answers with the UID in `target`.
std::string moveItem(CalendarClient& target, const CalendarObject& item, const Removal& removal, Call& call);

} // namespace bridge
