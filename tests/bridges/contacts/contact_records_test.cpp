#include "bridges/contacts/contact_descriptors.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(ContactRecords, SayEverythingAboutAContact) {
    const ContactDescriptor full{.id = "1",
                                 .givenName = "Grace",
                                 .middleName = "Brewster",
                                 .familyName = "Hopper",
                                 .nickname = "Amazing",
                                 .organizationName = "Navy",
                                 .jobTitle = "Rear admiral",
                                 .phoneNumbers = {"2", "1"},
                                 .emailAddresses = {"g@example.com"},
                                 .postalAddresses = {"1 Main Street\nArlington"},
                                 .birthday = ContactBirthday{1906, 12, 9},
                                 .imageAvailable = true};
    const auto json = encodeJSON(full);
    EXPECT_EQ(json, R"({"birthday":{"day":9,"month":12,"year":1906},"emailAddresses":["g@example.com"],)"
                    R"("familyName":"Hopper","givenName":"Grace","id":"1","imageAvailable":true,)"
                    R"("jobTitle":"Rear admiral","middleName":"Brewster","nickname":"Amazing",)"
                    R"("organizationName":"Navy","phoneNumbers":["2","1"],)"
                    R"("postalAddresses":["1 Main Street\nArlington"]})");
    EXPECT_EQ(decode<ContactDescriptor>(parseJSON(json)), full);
}

TEST(ContactRecords, LeaveOutNothingButABirthday) {
    EXPECT_EQ(encodeJSON(describeContact({.identifier = "1"})),
              R"({"emailAddresses":[],"familyName":"","givenName":"","id":"1","imageAvailable":false,"jobTitle":"",)"
              R"("middleName":"","nickname":"","organizationName":"","phoneNumbers":[],"postalAddresses":[]})");
    EXPECT_EQ(encodeJSON(describeBirthday({{}, 2, 29})), R"({"day":29,"month":2})");
}

TEST(ContactRecords, NameTheChangeOfAGroup) {
    const ContactGroupMembershipResult added{"g", {"b", "a"}, GroupMembershipChange::addMembers};
    const ContactGroupMembershipResult removed{"g", {"b"}, GroupMembershipChange::removeMembers};
    EXPECT_EQ(encodeJSON(added), R"({"contactIdentifiers":["b","a"],"groupIdentifier":"g","operation":"add_members"})");
    EXPECT_EQ(encodeJSON(removed),
              R"({"contactIdentifiers":["b"],"groupIdentifier":"g","operation":"remove_members"})");
    for (const auto& result : {added, removed})
        EXPECT_EQ(decode<ContactGroupMembershipResult>(parseJSON(encodeJSON(result))), result);
    EXPECT_EQ(encodeJSON(ContactGroupDescriptor{"g", "Friends"}), R"({"id":"g","name":"Friends"})");
}

} // namespace
} // namespace bridge
