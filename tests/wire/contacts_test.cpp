#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Consent = RunningBridge::Consent;

class ContactsOverTheWire : public testing::Test {
protected:
    // The identifier of what an operation made.
    static std::string made(const WireAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.bytes;
        return *answer.result().object()->at("id").string();
    }
    static std::string makeContact(const std::string& givenName) {
        return made(
            call("contacts.create", R"({"givenName":")" + givenName + R"(","phoneNumbers":[],"emailAddresses":[]})"));
    }
    static std::string makeGroup(const std::string& name) {
        return made(call("contacts.groups.create", R"({"name":")" + name + "\"}"));
    }
    static std::string identified(const std::string& id, const std::string& members = "") {
        return R"({"identifier":")" + id + "\"" + members + "}";
    }
    static std::string membership(const std::string& group, const std::string& contacts) {
        return R"({"groupIdentifier":")" + group + R"(","contactIdentifiers":)" + contacts + "}";
    }
    static std::string list(std::initializer_list<std::string> ids) {
        JSONValue::Array array;
        for (const auto& id : ids)
            array.push_back({id});
        return writeJSON({std::move(array)});
    }
    // The identifiers that a search found.
    static std::vector<std::string> found(const std::string& members) {
        std::vector<std::string> ids;
        const auto result = call("contacts.search", R"({"limit":10)" + members + "}").result();
        for (const auto& contact : *result.array())
            ids.push_back(*contact.object()->at("id").string());
        return ids;
    }

    RunningBridge bridge{Consent::full};
};

using Identifiers = std::vector<std::string>;

TEST_F(ContactsOverTheWire, AreMadeFoundChangedAndDeleted) {
    const auto created =
        call("contacts.create", R"({"givenName":" José ","familyName":"García","phoneNumbers":["+34 555 0100"],)"
                                R"("emailAddresses":["jose@example.com"],"birthday":{"month":2,"day":29.0}})");
    const auto id = made(created);
    const auto described = [&](const std::string& phones, const std::string& jobTitle, const std::string& birthday) {
        return "{" + birthday +
               R"("emailAddresses":["jose@example.com"],"familyName":"García","givenName":"José","id":")" + id +
               R"(","imageAvailable":false,"jobTitle":")" + jobTitle +
               R"(","middleName":"","nickname":"","organizationName":"","phoneNumbers":)" + phones +
               R"(,"postalAddresses":[]})";
    };
    const auto asMade = described(R"(["+34 555 0100"])", "", R"("birthday":{"day":29,"month":2},)");
    EXPECT_EQ(writeJSON(created.result()), asMade);
    EXPECT_EQ(writeJSON(call("contacts.search", R"({"limit":0,"query":" jose "})").result()), "[" + asMade + "]");
    EXPECT_EQ(writeJSON(call("contacts.search", R"({"limit":5,"query":"nobody"})").result()), "[]");

    EXPECT_EQ(writeJSON(call("contacts.update",
                             identified(id, R"(,"jobTitle":"Baker","phoneNumbers":[],"clearBirthday":true,)"
                                            R"("birthday":{"month":1,"day":1},"nickname":null)"))
                            .result()),
              described("[]", "Baker", ""));
    EXPECT_EQ(call("contacts.delete", identified(id)).code(), "confirmation_required");
    EXPECT_EQ(writeJSON(call("contacts.delete", identified(id), true).result()),
              R"({"deleted":true,"identifier":")" + id + "\"}");
    EXPECT_EQ(call("contacts.delete", identified(id), true).message(), "Resource not found: " + id);
}

TEST_F(ContactsOverTheWire, AreGatheredInGroups) {
    const auto ada = makeContact("Ada"), bea = makeContact("Bea");
    const auto beta = makeGroup("Beta"), alpha = makeGroup(" alpha\\n");
    EXPECT_EQ(writeJSON(call("contacts.groups.list").result()),
              R"([{"id":")" + alpha + R"(","name":"alpha"},{"id":")" + beta + R"(","name":"Beta"}])");

    const auto both = list({bea, ada});
    EXPECT_EQ(writeJSON(call("contacts.groups.add_members", membership(beta, both)).result()),
              R"({"contactIdentifiers":)" + both + R"(,"groupIdentifier":")" + beta +
                  R"(","operation":"add_members"})");
    const auto inBeta = R"(,"groupID":")" + beta + "\"";
    EXPECT_EQ(found(inBeta), (Identifiers{ada, bea}));
    EXPECT_EQ(found(inBeta + R"(,"query":"DA")"), Identifiers{ada});
    EXPECT_EQ(writeJSON(call("contacts.groups.remove_members", membership(beta, list({ada}))).result()),
              R"({"contactIdentifiers":)" + list({ada}) + R"(,"groupIdentifier":")" + beta +
                  R"(","operation":"remove_members"})");
    EXPECT_EQ(found(inBeta), Identifiers{bea});

    EXPECT_EQ(call("contacts.groups.delete", identified(beta)).code(), "confirmation_required");
    EXPECT_EQ(writeJSON(call("contacts.groups.delete", identified(beta), true).result()),
              R"({"deleted":true,"identifier":")" + beta + "\"}");
    EXPECT_EQ(call("contacts.search", R"({"limit":1)" + inBeta + "}").message(), "Resource not found: " + beta);
    EXPECT_EQ(found(""), (Identifiers{ada, bea}));
}

TEST_F(ContactsOverTheWire, RefusalsHaveTheirCodes) {
    const auto ada = makeContact("Ada");
    const auto group = makeGroup("Friends");
    for (const auto& [operation, payload, message] :
         std::initializer_list<std::tuple<const char*, std::string, const char*>>{
             {"contacts.create", R"({"givenName":" ","phoneNumbers":[],"emailAddresses":[]})",
              "Contact given name cannot be empty."},
             {"contacts.create", R"({"givenName":"Ada"})", ".phoneNumbers: required, but missing"},
             {"contacts.create",
              R"({"givenName":"A","phoneNumbers":[],"emailAddresses":[],"birthday":{"year":10000,"month":1,"day":1}})",
              "Contact birthday year must be between 1 and 9999."},
             {"contacts.update", identified(ada, R"(,"givenName":"\t")"),
              "Contact given name cannot be empty when supplied."},
             {"contacts.update", identified(ada, R"(,"birthday":{"year":2023,"month":2,"day":29})"),
              "Contact birthday is not a valid calendar date."},
             {"contacts.groups.create", R"({"name":"  "})", "Contact group name cannot be empty."},
             {"contacts.groups.add_members", membership(group, "[]"),
              "Contact group changes require between 1 and 100 contact IDs."},
             {"contacts.groups.remove_members", membership(group, list({ada, ada})),
              "Contact IDs in a group change must be unique."}}) {
        const auto answer = call(operation, payload);
        EXPECT_EQ(answer.code(), "malformed_request") << operation;
        EXPECT_EQ(answer.message(), std::string("Malformed bridge request: ") + message);
    }
    const auto unknown = call("contacts.groups.add_members", membership(group, list({ada, "nobody"})));
    EXPECT_EQ(unknown.status, 400);
    EXPECT_EQ(unknown.code(), "resource_not_found");
    EXPECT_EQ(unknown.message(), "Resource not found: nobody");
    EXPECT_EQ(found(R"(,"groupID":")" + group + "\""), Identifiers());
}

TEST(ContactsWithoutConsent, AreDenied) {
    const RunningBridge bridge(Consent::notAsked);
    for (const auto& [operation, payload] : std::initializer_list<std::pair<const char*, const char*>>{
             {"contacts.search", R"({"limit":1})"},
             {"contacts.groups.list", ""},
             {"contacts.create", R"({"givenName":"","phoneNumbers":[],"emailAddresses":[]})"},
             {"contacts.delete", R"({"identifier":"c"})"}}) {
        const auto answer = call(operation, payload, true);
        EXPECT_EQ(answer.status, 403);
        EXPECT_EQ(answer.code(), "permission_denied");
        EXPECT_EQ(answer.message(), "Full access to Contacts has not been granted.");
    }
}

} // namespace
} // namespace bridge
