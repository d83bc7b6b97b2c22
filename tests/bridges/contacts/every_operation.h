#pragma once

#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {

// What is in the address book: Ada, and Grace in the group.
struct AddressBook {
    std::string ada;
    std::string grace;
    std::string group;
};

// One operation of the bridge with a request that goes well, and with one that makes no sense.
struct ContactOperation {
    const char* name;
    std::function<Task<>(ContactDataBridge&, const AddressBook&)> run;
    std::function<Task<>(ContactDataBridge&)> runNonsense;
};

// Drops the result.
template <typename T> Task<> completed(Task<T> task) {
    co_await std::move(task);
}

inline std::vector<ContactOperation> everyContactOperation() {
    using Bridge = ContactDataBridge;
    using Book = AddressBook;
    return {
        {"Search",
         [](Bridge& bridge, const Book&) {
             return completed(bridge.searchContacts({"a", 5, {}}));
         },
         [](Bridge& bridge) {
             return completed(bridge.searchContacts({{}, -1, {}}));
         }},
        {"SearchInAGroup",
         [](Bridge& bridge, const Book& book) {
             return completed(bridge.searchContacts({"a", 5, book.group}));
         },
         [](Bridge& bridge) {
             return completed(bridge.searchContacts({{}, -1, "unknown"}));
         }},
        {"Create", [](Bridge& bridge, const Book&) { return completed(bridge.createContact({.givenName = "New"})); },
         [](Bridge& bridge) { return completed(bridge.createContact({.givenName = ""})); }},
        {"Update",
         [](Bridge& bridge, const Book& book) {
             return completed(bridge.updateContact({.identifier = book.ada, .nickname = "New"}));
         },
         [](Bridge& bridge) { return completed(bridge.updateContact({.identifier = "", .givenName = ""})); }},
        {"Delete", [](Bridge& bridge, const Book& book) { return bridge.deleteContact(book.ada); },
         [](Bridge& bridge) { return bridge.deleteContact(""); }},
        {"ListGroups", [](Bridge& bridge, const Book&) { return completed(bridge.listGroups()); },
         [](Bridge& bridge) { return completed(bridge.listGroups()); }},
        {"CreateGroup", [](Bridge& bridge, const Book&) { return completed(bridge.createGroup({"New"})); },
         [](Bridge& bridge) { return completed(bridge.createGroup({""})); }},
        {"DeleteGroup", [](Bridge& bridge, const Book& book) { return bridge.deleteGroup(book.group); },
         [](Bridge& bridge) { return bridge.deleteGroup(""); }},
        {"AddMembers",
         [](Bridge& bridge, const Book& book) {
             return completed(bridge.addMembers({book.group, {book.ada}}));
         },
         [](Bridge& bridge) {
             return completed(bridge.addMembers({"", {}}));
         }},
        {"RemoveMembers",
         [](Bridge& bridge, const Book& book) {
             return completed(bridge.removeMembers({book.group, {book.grace}}));
         },
         [](Bridge& bridge) {
             return completed(bridge.removeMembers({"", {}}));
         }},
    };
}

class EveryOperation : public ContactBridgeTest, public testing::WithParamInterface<ContactOperation> {
protected:
    EveryOperation() {
        present.ada = book.put({.givenName = "Ada", .familyName = "Lovelace"});
        present.grace = book.put({.givenName = "Grace", .familyName = "Adamson"});
        present.group = book.putGroup("Friends", {present.grace});
    }
    std::string failure() { return failureOf(GetParam().run(bridge, present)); }
    std::string failureOfNonsense() { return failureOf(GetParam().runNonsense(bridge)); }

    AddressBook present;
};

inline std::string operationName(const testing::TestParamInfo<ContactOperation>& info) {
    return info.param.name;
}

} // namespace bridge

#define FOR_EVERY_OPERATION(suite)                                                                                     \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(everyContactOperation()), operationName)
