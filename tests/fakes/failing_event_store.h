#pragma once

#include "tests/fakes/watched_event_store.h"

namespace bridge {

// An event store of which one call fails, counted from 0, or every call. A call that fails has no effect.
class FailingEventStore : public WatchedEventStore {
public:
    using WatchedEventStore::WatchedEventStore;

    bool isLost = false;
    std::optional<size_t> failingCall;
    std::vector<Call> calls; // that were made, the failed ones too

    void reset() {
        isLost = false;
        failingCall.reset();
        calls.clear();
    }

protected:
    Task<> before(Call call) override {
        const size_t index = calls.size();
        calls.push_back(std::move(call));
        if (isLost || failingCall == index) throw PlatformError("The calendars can't be reached.");
        co_return;
    }
};

} // namespace bridge
