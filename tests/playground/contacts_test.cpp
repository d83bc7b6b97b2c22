#include "tests/playground/playground_process.h"

#include <csignal>
#include <gmock/gmock.h>
#include <map>

namespace bridge {
namespace {

class Contacts : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    static JSONValue::Array search(const ServingPlayground& playground, const std::string& members = "") {
        const auto answer = playground.call("contacts.search", R"({"limit":500)" + members + "}");
        EXPECT_EQ(answer.status, 200);
        return *answer.result().array();
    }
    static std::string text(const JSONValue& record, const char* name) { return *record.object()->at(name).string(); }
    static Texts names(const JSONValue::Array& contacts) {
        Texts names;
        for (const auto& contact : contacts)
            names.push_back(text(contact, "givenName") + "|" + text(contact, "familyName"));
        return names;
    }
    // By name.
    static std::map<std::string, std::string> groups(const ServingPlayground& playground) {
        std::map<std::string, std::string> identifiers;
        const auto listed = playground.call("contacts.groups.list").result();
        for (const auto& group : *listed.array())
            identifiers[text(group, "name")] = text(group, "id");
        return identifiers;
    }
    static std::string in(const std::string& group) { return R"(,"groupID":")" + group + '"'; }
    static std::string query(const std::string& text) { return R"(,"query":")" + text + '"'; }
    Texts words(Texts more = {}) const {
        more.insert(more.end(), {"--profile", temporary.file("kept")});
        return more;
    }

    TemporaryFolder temporary;
};

TEST_F(Contacts, AreOfAllKinds) {
    const ServingPlayground playground(temporary);
    const auto contacts = search(playground);
    EXPECT_GE(contacts.size(), 12U);
    EXPECT_LE(contacts.size(), 20U);
    size_t organizations = 0, pictures = 0, withYear = 0, withoutYear = 0, nicknames = 0, manyNumbers = 0;
    Texts addresses;
    for (const auto& contact : contacts) {
        const auto& members = *contact.object();
        organizations += text(contact, "givenName").empty() && text(contact, "familyName").empty() ? 1 : 0;
        pictures += *members.at("imageAvailable").boolean() ? 1 : 0;
        nicknames += text(contact, "nickname").empty() ? 0 : 1;
        manyNumbers += members.at("phoneNumbers").array()->size() > 1 ? 1 : 0;
        if (const auto birthday = members.find("birthday"); birthday != members.end())
            ++(birthday->second.object()->contains("year") ? withYear : withoutYear);
        for (const auto& address : *members.at("postalAddresses").array())
            addresses.push_back(*address.string());
    }
    EXPECT_EQ(organizations, 1U);
    EXPECT_EQ(pictures, 1U);
    EXPECT_GE(nicknames, 1U);
    EXPECT_GE(manyNumbers, 2U);
    EXPECT_GE(withYear, 2U);
    EXPECT_GE(withoutYear, 2U);
    EXPECT_THAT(names(contacts), testing::IsSupersetOf({"花子|山田", "Анна|Петрова", "ליאת|כהן", "عمر|الحسن"}));
    EXPECT_THAT(addresses,
                testing::IsSupersetOf(
                    {"Feldweg 3\n04109 Leipzig\nDeutschland", "1400 Pine Street\nSeattle, WA 98101\nUnited States",
                     "12 Mill Lane\nLondon\nE1 6AN\nUnited Kingdom", "〒100-0005\n東京都千代田区\n丸の内1-1\n日本"}));
}

TEST_F(Contacts, AreFoundByABeginningWithoutAccents) {
    const ServingPlayground playground(temporary);
    EXPECT_THAT(names(search(playground, query("JOSE"))),
                testing::UnorderedElementsAre("José|Álvarez Núñez", "Josefine|Lindqvist"));
    EXPECT_EQ(names(search(playground, query("lefe francoise"))), Texts{"Françoise|Lefèvre"});
    EXPECT_EQ(names(search(playground, query("山"))), Texts{"花子|山田"});
    EXPECT_EQ(names(search(playground, query("gartnerei"))), Texts{"|"});
}

TEST_F(Contacts, AreInGroups) {
    const ServingPlayground playground(temporary);
    const auto present = groups(playground);
    ASSERT_EQ(present.size(), 3U);
    EXPECT_EQ(search(playground, in(present.at("Choir"))).size(), 5U);
    EXPECT_EQ(names(search(playground, in(present.at("Choir")) + query("indq"))), Texts{"Josefine|Lindqvist"});
    EXPECT_THAT(names(search(playground, in(present.at("Family")))),
                testing::UnorderedElementsAre("Ada|Whitcombe", "Françoise|Lefèvre", "João|da Silva"));
    EXPECT_TRUE(search(playground, in(present.at("Neighbours"))).empty());
}

TEST_F(Contacts, ComeOnceToAKeptProfile) {
    size_t before = 0;
    {
        ServingPlayground first(temporary, words());
        before = search(first).size();
        const auto made = first.call("contacts.create", R"({"givenName":"Ute","phoneNumbers":[],"emailAddresses":[]})");
        EXPECT_EQ(made.status, 200);
        EXPECT_EQ(first.end(SIGTERM).status, 0);
    }
    const ServingPlayground second(temporary, words());
    EXPECT_EQ(search(second).size(), before + 1);
    EXPECT_EQ(groups(second).size(), 3U);
}

TEST_F(Contacts, ComeFromFilesToo) {
    putFile(temporary / "Club", "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Keller;Ute;;;\r\nFN:Ute Keller\r\nCATEGORIES:Club\r\n"
                                "END:VCARD\r\n");
    ServingPlayground playground(temporary, words({"--import", temporary.file("Club")}));
    EXPECT_EQ(names(search(playground, query("keller"))), Texts{"Ute|Keller"});
    EXPECT_EQ(names(search(playground, in(groups(playground).at("Club")))), Texts{"Ute|Keller"});
    const auto ended = playground.end(SIGTERM);
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.errors, testing::HasSubstr("Club\n  1 contact and 1 group\n"));
}

TEST_F(Contacts, NeedTheUsersLeave) {
    const ServingPlayground playground(temporary, {"--permission", "contacts=denied"});
    EXPECT_EQ(playground.call("contacts.search", R"({"limit":5})").code(), "permission_denied");
    EXPECT_EQ(playground.call("contacts.groups.list").code(), "permission_denied");
}

} // namespace
} // namespace bridge
