#pragma once

#include "adapters/eds/call.h"
#include "adapters/eds/card_store.h"
#include "adapters/eds/change_plan.h"

namespace bridge {

// Makes the changes, or none: the service makes each of its calls whole or not at all, and what earlier calls did is
// taken back when a later one fails. What was done although the answer was lost counts as done. Blocks. Answers with
// the UIDs of what was added, in order.
std::vector<std::string> makeChanges(CardStore& store, Call& call, const BookChanges& changes);

} // namespace bridge
