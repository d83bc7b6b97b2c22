#pragma once

#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace bridge {

// A phone number or e-mail address with what it is for: "main", "work", "home", "mobile", or a word of the user's own.
struct LabeledValue {
    std::string label;
    std::string value;
    bool operator==(const LabeledValue&) const = default;
};

// The parts of an address as people give them; each may be empty or have several lines.
struct PostalAddress {
    std::string street;
    std::string subLocality; // a district of the city
    std::string city;
    std::string state; // or province, prefecture, county
    std::string postalCode;
    std::string country;
    std::string isoCountryCode; // ISO 3166-1 alpha-2 in any case; empty when unknown
    bool operator==(const PostalAddress&) const = default;
};

// A day of the Gregorian calendar, of which the year may be unknown.
struct Birthday {
    std::optional<int> year = std::nullopt;
    int month = 0;
    int day = 0;
    bool operator==(const Birthday&) const = default;
};

// One person or organization. Texts are UTF-8; what is not known is empty.
struct Contact {
    std::string identifier; // the store's; opaque, lasting
    std::string givenName;
    std::string middleName;
    std::string familyName;
    std::string nickname;
    std::string organizationName;
    std::string jobTitle;
    std::vector<LabeledValue> phoneNumbers;
    std::vector<LabeledValue> emailAddresses;
    std::vector<PostalAddress> postalAddresses;
    std::optional<Birthday> birthday = std::nullopt;
    bool imageAvailable = false;
    bool isEditable = true; // whether it may be changed and deleted
    bool operator==(const Contact&) const = default;
};

struct ContactGroup {
    std::string identifier;
    std::string name;
    bool operator==(const ContactGroup&) const = default;
};

// Which contacts an enumeration visits.
struct AllContacts {};
// Those in whose name (given, middle, family, nickname, organization) each word of the text begins a word, without
// regard to case and accents, in any order and any script. Phone numbers and addresses are not looked at. A text
// without a word matches nobody.
struct ContactsMatchingName {
    std::string text;
};
// The members of the group; nobody when there is no such group.
struct ContactsInGroup {
    std::string groupIdentifier;
};
using ContactPredicate = std::variant<AllContacts, ContactsMatchingName, ContactsInGroup>;

// One change of a batch. What is added goes into the user's default address book.
struct AddContact {
    Contact contact; // its identifier does not matter
};
// Writes those fields that differ from what is stored, postal addresses and the image excepted; everything else of the
// contact, also what has no field here, stays as it is.
struct UpdateContact {
    Contact contact;
};
struct DeleteContact {
    std::string identifier;
};
struct AddContactGroup {
    std::string name;
};
// Its members stay.
struct DeleteContactGroup {
    std::string identifier;
};
// Adding a member again and removing what is no member changes nothing and is no error.
struct AddGroupMember {
    std::string contactIdentifier;
    std::string groupIdentifier;
};
struct RemoveGroupMember {
    std::string contactIdentifier;
    std::string groupIdentifier;
};
using ContactChange = std::variant<AddContact, UpdateContact, DeleteContact, AddContactGroup, DeleteContactGroup,
                                   AddGroupMember, RemoveGroupMember>;

// The user's address books, with contacts that are kept in several of them shown as one. It keeps no rights: who may
// see what is decided above it.
//
// Called on the main thread; each call is a task, since an address book may be another machine. A store that fails, or
// does not answer in its time, throws PlatformError in its own words; an empty answer means that there is nothing.
// Every call reads afresh, and what a finished call has written is found by the next one, in this process and after a
// crash. A call that throws has changed nothing. A task that is dropped has changed all or nothing.
class ContactStore {
public:
    virtual ~ContactStore() = default;

    // For the log and the dashboard: "Evolution Data Server", "this computer".
    virtual std::string description() const = 0;

    // Those of the identifiers that exist, in the given order, each once. Any bytes may be asked for.
    virtual Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) = 0;

    // Calls `visit` for each contact in the order that the user sees them in an address book, by family name, given
    // name and organization as the user's language sorts, until it returns false. `visit` does not call the store.
    virtual Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) = 0;

    // Every group, in the store's order.
    virtual Task<std::vector<ContactGroup>> groups() = 0;

    // Makes all the changes, in their order, or none. Answers with the identifiers of what was added, contacts and
    // groups, in the order of their changes. Throws when something named is gone or takes no changes.
    virtual Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) = 0;
};

} // namespace bridge
