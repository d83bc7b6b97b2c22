#pragma once

#include "base/event_loop.h"

namespace bridge::bench {

// Searches by name in the user's own address book, which is filled for it, against libebook.
void measureContacts(EventLoop& loop);

} // namespace bridge::bench
