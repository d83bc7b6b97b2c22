#pragma once

#include "base/event_loop.h"
#include "platform/contact_store.h"

#include <string_view>

namespace bridge {

// A contact store with its surroundings, as the contract's tests need it: fresh and empty for each test.
class ContactStoreUnderTest {
public:
    virtual ~ContactStoreUnderTest() = default;

    virtual EventLoop& loop() = 0;
    virtual ContactStore& store() = 0;

    // Puts a vCard into the address book by the store's own ways, as another program would have, and gives the
    // identifier of the contact.
    virtual std::string put(std::string_view vCard) = 0;
    // Lets go of the store and opens it again, as a restart of the bridge does.
    virtual void reopen() = 0;
    // From now on whatever the store stands on is gone, until restore().
    virtual void lose() = 0;
    virtual void restore() = 0;

    // Why it can't run on this machine; empty when it can.
    virtual std::string hindrance() { return {}; }

    template <typename T> T wait(Task<T> task) { return loop().runUntilDone(std::move(task)); }
};

} // namespace bridge
