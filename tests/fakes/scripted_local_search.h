#pragma once

#include "base/platform_error.h"
#include "platform/local_search.h"
#include "tests/base/gate.h"

namespace bridge {

// Finds what the test wrote down, whatever is asked, at once or when the gate opens, and remembers the queries.
class ScriptedLocalSearch : public LocalSearch {
public:
    std::vector<MapItem> found;
    std::optional<std::string> failure;
    bool waits = false;
    Gate answered;
    std::vector<LocalSearchQuery> queries;

    Task<std::vector<MapItem>> search(LocalSearchQuery query) override {
        queries.push_back(std::move(query));
        if (waits) co_await answered.opened();
        if (failure) throw PlatformError(*failure);
        co_return found;
    }
    std::string description() const override { return "a script"; }
};

} // namespace bridge
