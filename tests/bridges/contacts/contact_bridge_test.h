#pragma once

#include "base/apple_bridge_error.h"
#include "bridges/contacts/contact_data_bridge.h"
#include "tests/fakes/failing_contact_store.h"
#include "tests/fakes/gated_contact_store.h"
#include "tests/fakes/memory_contact_store.h"
#include "tests/fakes/scripted_authorization.h"

#include <gmock/gmock.h>

namespace bridge {

using Call = FailingContactStore::Call;

// A bridge over an empty address book, in which a test can make single calls fail.
class ContactBridgeTest : public testing::Test {
protected:
    template <typename T> static T run(Task<T> task) {
        task.start();
        return resultOf(task);
    }
    template <typename T> static T resultOf(Task<T>& started) {
        if (!started.done()) throw std::logic_error("It waits.");
        return started.take();
    }
    // What it failed with, as the user reads it; "" when it went well.
    template <typename T> static std::string failureOf(Task<T> task) {
        task.start();
        return failureIn(task);
    }
    template <typename T> static std::string failureIn(Task<T>& started) {
        try {
            resultOf(started);
        } catch (const AppleBridgeError& error) {
            return error.message();
        } catch (const PlatformError& error) {
            return std::string("platform: ") + error.what();
        }
        return "";
    }
    std::string create(CreateContactRequest request) { return run(bridge.createContact(std::move(request))).id; }
    Contact stored(const std::string& identifier) { return run(book.contacts({identifier})).at(0); }
    const std::vector<std::string>& members(const std::string& group) { return book.state().members.at(group); }
    // The book as it is now, and what was asked of it forgotten.
    MemoryContactStore::State begin() {
        store.calls.clear();
        return book.state();
    }

    MemoryContactStore book;
    FailingContactStore store{book};
    ScriptedAuthorization authorization;
    ContactDataBridge bridge{store, authorization};
};

} // namespace bridge
