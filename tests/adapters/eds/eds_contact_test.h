#pragma once

#include "tests/adapters/eds/eds_contact_store_under_test.h"

#include <gmock/gmock.h>

namespace bridge {

class EdsContactTest : public testing::Test {
protected:
    static constexpr auto personal = "system-address-book";

    void SetUp() override {
        if (const auto hindrance = PrivateEds::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
        open(EdsContactStoreUnderTest::ample);
    }
    void open(EdsPatience patience) { setting = std::make_unique<EdsContactStoreUnderTest>(patience); }

    EdsContactStore& store() { return setting->store(); }
    PrivateEds& eds() { return PrivateEds::get(); }
    template <typename T> T wait(Task<T> task) { return setting->wait(std::move(task)); }

    template <typename Call> std::string failure(Call&& call) {
        try {
            call();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }

    std::vector<std::string> execute(std::vector<ContactChange> changes) {
        return wait(store().execute(std::move(changes)));
    }
    static Contact named(const std::string& givenName) {
        Contact contact;
        contact.givenName = givenName;
        return contact;
    }
    std::string add(const std::string& givenName) { return execute({AddContact{named(givenName)}}).at(0); }
    std::string addGroup(const std::string& name) { return execute({AddContactGroup{name}}).at(0); }
    std::string put(const std::string& book, const std::string& uid, const std::string& lines) {
        BookNeighbour::put(book, "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + uid + "\r\n" + lines + "END:VCARD\r\n");
        return identifier(book, uid);
    }
    static std::string identifier(const std::string& book, const std::string& uid) {
        return EdsContactStoreUnderTest::identifier(book, uid);
    }
    static std::string uidOf(const std::string& identifier) { return ItemIdentifier::parse(identifier).value().uid; }
    static std::string bookOf(const std::string& identifier) {
        return ItemIdentifier::parse(identifier).value().sourceID;
    }

    std::optional<Contact> contact(const std::string& identifier) {
        auto found = wait(store().contacts({identifier}));
        return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
    }
    Task<> visiting(ContactPredicate predicate, std::vector<std::string>& names) {
        return store().enumerate(std::move(predicate), [&names](const Contact& each) {
            names.push_back(each.givenName);
            return true;
        });
    }
    std::vector<std::string> names(ContactPredicate predicate = AllContacts{}) {
        std::vector<std::string> found;
        wait(visiting(std::move(predicate), found));
        return found;
    }
    std::vector<std::string> members(const std::string& group) { return names(ContactsInGroup{group}); }

    using Names = std::vector<std::string>;
    std::unique_ptr<EdsContactStoreUnderTest> setting;
};

} // namespace bridge
