#pragma once

#include "bridges/contacts/contact_birthday.h"
#include "bridges/contacts/group_membership.h"

namespace bridge {

// One contact as the agent sees it. What is not known is empty; only a birthday can be absent.
struct ContactDescriptor {
    std::string id;
    std::string givenName;
    std::string middleName;
    std::string familyName;
    std::string nickname;
    std::string organizationName;
    std::string jobTitle;
    std::vector<std::string> phoneNumbers; // without what they are for, as are the others
    std::vector<std::string> emailAddresses;
    std::vector<std::string> postalAddresses; // each of several lines, as on an envelope
    std::optional<ContactBirthday> birthday;
    bool imageAvailable = false;

    bool operator==(const ContactDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &ContactDescriptor::id),
                          required("givenName", &ContactDescriptor::givenName),
                          required("middleName", &ContactDescriptor::middleName),
                          required("familyName", &ContactDescriptor::familyName),
                          required("nickname", &ContactDescriptor::nickname),
                          required("organizationName", &ContactDescriptor::organizationName),
                          required("jobTitle", &ContactDescriptor::jobTitle),
                          required("phoneNumbers", &ContactDescriptor::phoneNumbers),
                          required("emailAddresses", &ContactDescriptor::emailAddresses),
                          required("postalAddresses", &ContactDescriptor::postalAddresses),
                          optional("birthday", &ContactDescriptor::birthday),
                          required("imageAvailable", &ContactDescriptor::imageAvailable)};
    }
};
static_assert(listsEveryMember<ContactDescriptor>());

ContactDescriptor describeContact(const Contact& contact);

struct ContactGroupDescriptor {
    std::string id;
    std::string name;

    bool operator==(const ContactGroupDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &ContactGroupDescriptor::id), required("name", &ContactGroupDescriptor::name)};
    }
};
static_assert(listsEveryMember<ContactGroupDescriptor>());

// By name, as the user's language sorts without regard to case.
std::vector<ContactGroupDescriptor> describeGroups(std::vector<ContactGroup> groups);

// Echoes what was asked for.
struct ContactGroupMembershipResult {
    std::string groupIdentifier;
    std::vector<std::string> contactIdentifiers;
    GroupMembershipChange operation = GroupMembershipChange::addMembers;

    bool operator==(const ContactGroupMembershipResult&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("groupIdentifier", &ContactGroupMembershipResult::groupIdentifier),
                          required("contactIdentifiers", &ContactGroupMembershipResult::contactIdentifiers),
                          required("operation", &ContactGroupMembershipResult::operation)};
    }
};
static_assert(listsEveryMember<ContactGroupMembershipResult>());

} // namespace bridge
