#include "tests/bridges/contacts/contact_bridge_test.h"

#include <limits>

namespace bridge {
namespace {

using Names = std::vector<std::string>;

class SearchContacts : public ContactBridgeTest {
protected:
    Names search(std::optional<std::string> query, std::optional<std::string> groupID = {}, int64_t limit = 100) {
        Names names;
        for (const auto& found : run(bridge.searchContacts({std::move(query), limit, std::move(groupID)})))
            names.push_back(found.givenName);
        return names;
    }
    size_t found(int64_t limit) { return search({}, {}, limit).size(); }
    std::string put(const std::string& givenName, const std::string& familyName = "") {
        return book.put({.givenName = givenName, .familyName = familyName});
    }
};

TEST_F(SearchContacts, FindsEverybodyInTheStoresOrder) {
    put("Zoe", "Archer");
    put("Adam", "Zeller");
    put("bea", "archer");
    EXPECT_EQ(search({}), (Names{"bea", "Zoe", "Adam"}));
    EXPECT_EQ(search(""), (Names{"bea", "Zoe", "Adam"}));
}

TEST_F(SearchContacts, OfAnEmptyBookIsAnEmptyList) {
    EXPECT_EQ(search({}), Names());
    EXPECT_EQ(search("anybody"), Names());
    EXPECT_EQ(search("anybody", book.putGroup("Nobody")), Names());
}

TEST_F(SearchContacts, WithAQueryOfSpacesFindsEverybody) {
    put("Zoe");
    const auto adam = put("Adam");
    for (const auto* query : {" ", " \t\r\n ", "\u00a0\u2003\u2029"}) {
        EXPECT_EQ(search(query).size(), 2u);
        EXPECT_EQ(search(query, book.putGroup("One", {adam})), Names{"Adam"});
    }
}

TEST_F(SearchContacts, LeavesTheMatchingOfNamesToTheStore) {
    put("José", "García");
    put("Josefine");
    put("Marie-José");
    EXPECT_EQ(search(" JOSE\n"), (Names{"José", "Josefine", "Marie-José"}));
    EXPECT_EQ(search("garc jos"), Names{"José"});
    EXPECT_EQ(search("osé"), Names());
    EXPECT_EQ(search("!"), Names());
}

TEST_F(SearchContacts, InAGroupFindsItsMembersOnly) {
    put("Adam");
    const auto bea = put("Bea");
    const auto zoe = put("Zoe");
    const auto group = book.putGroup("Friends", {zoe, bea});
    EXPECT_EQ(search({}, group), (Names{"Bea", "Zoe"}));
    EXPECT_EQ(search("", group), (Names{"Bea", "Zoe"}));
}

TEST_F(SearchContacts, InAGroupLooksAnywhereInAnyName) {
    const auto group = book.putGroup(
        "All",
        {book.put({.givenName = "José"}), book.put({.givenName = "B", .middleName = "Marie-JOSE"}),
         book.put({.givenName = "C", .familyName = "Sanjosé"}), book.put({.givenName = "D", .nickname = "Josefa"}),
         book.put({.givenName = "E", .organizationName = "San Jose\u0301 Water"}),
         book.put({.givenName = "F", .jobTitle = "Jose", .emailAddresses = {{"work", "jose@example.com"}}})});
    EXPECT_THAT(search("jose", group), testing::UnorderedElementsAre("José", "B", "C", "D", "E"));
    EXPECT_THAT(search(" ÓSÉ ", group), testing::UnorderedElementsAre("José", "B", "C", "D", "E"));
    EXPECT_THAT(search("%", group), testing::IsEmpty());
}

TEST_F(SearchContacts, InAGroupFindsNamesThatStandSideBySide) {
    const auto group = book.putGroup("All", {book.put({.givenName = "Grace",
                                                       .middleName = "Brewster",
                                                       .familyName = "Hopper",
                                                       .nickname = "Amazing Grace",
                                                       .organizationName = "Navy"})});
    EXPECT_EQ(search("grace brewster hopper amazing grace navy", group), Names{"Grace"});
    EXPECT_EQ(search("ster hop", group), Names{"Grace"});
    EXPECT_EQ(search("hopper grace", group), Names());
    EXPECT_EQ(search("grace  brewster", group), Names());
}

// Names are five and the spaces between them four, whichever are empty.
TEST_F(SearchContacts, InAGroupFindsAnEmptyNameBetweenTwoSpaces) {
    const auto group =
        book.putGroup("All", {book.put({.givenName = "Ada", .familyName = "Lovelace", .organizationName = "Engines"})});
    EXPECT_EQ(search("ada  lovelace", group), Names{"Ada"});
    EXPECT_EQ(search("lovelace  engines", group), Names{"Ada"});
    EXPECT_EQ(search("ada  lovelace  engines", group), Names{"Ada"});
    EXPECT_EQ(search("ada lovelace", group), Names());
}

TEST_F(SearchContacts, OfAnUnknownGroupIsNotFound) {
    book.putGroup("Friends");
    for (const auto* group : {"", "group", "Friends", "GROUP-1", "group-1 "}) {
        begin();
        EXPECT_EQ(failureOf(bridge.searchContacts({"x", 5, group})), std::string("Resource not found: ") + group);
        EXPECT_EQ(store.calls, std::vector{Call::groups});
    }
}

TEST_F(SearchContacts, KeepsItsLimitBetweenOneAndFiveHundred) {
    for (int count = 0; count < 501; ++count)
        put("Adam");
    EXPECT_EQ(found(0), 1u);
    EXPECT_EQ(found(-1), 1u);
    EXPECT_EQ(found(std::numeric_limits<int64_t>::min()), 1u);
    EXPECT_EQ(found(1), 1u);
    EXPECT_EQ(found(499), 499u);
    EXPECT_EQ(found(500), 500u);
    EXPECT_EQ(found(501), 500u);
    EXPECT_EQ(found(10'000), 500u);
    EXPECT_EQ(found(std::numeric_limits<int64_t>::max()), 500u);
}

TEST_F(SearchContacts, StopsTheStoreAsSoonAsItHasEnough) {
    std::vector<std::string> members;
    for (int count = 0; count < 10; ++count)
        members.push_back(put(count % 2 ? "Odd" : "Even", "Number " + std::to_string(count)));
    search({}, {}, 3);
    EXPECT_EQ(book.visited, 3);
    book.visited = 0;
    EXPECT_EQ(search("odd", book.putGroup("All", members), 3), (Names{"Odd", "Odd", "Odd"}));
    EXPECT_EQ(book.visited, 6);
}

TEST_F(SearchContacts, DescribesAllThatIsKnown) {
    const auto id =
        book.put({.givenName = "Grace",
                  .middleName = "Brewster",
                  .familyName = "Hopper",
                  .nickname = "Amazing",
                  .organizationName = "Navy",
                  .jobTitle = "Rear admiral",
                  .phoneNumbers = {{"work", "+1 555 0100"}, {"home", "555-0101"}},
                  .emailAddresses = {{"home", "z@example.com"}, {"", "a@example.com"}},
                  .postalAddresses =
                      {{.street = "1 Main St",
                        .city = "Arlington",
                        .state = "VA",
                        .postalCode = "22201",
                        .isoCountryCode = "us"},
                       {.street = "Hauptstr. 5", .city = "Berlin", .postalCode = "10115", .isoCountryCode = "DE"}},
                  .birthday = Birthday{1906, 12, 9},
                  .imageAvailable = true});
    EXPECT_EQ(run(bridge.searchContacts({{}, 1, {}})),
              std::vector{
                  (ContactDescriptor{.id = id,
                                     .givenName = "Grace",
                                     .middleName = "Brewster",
                                     .familyName = "Hopper",
                                     .nickname = "Amazing",
                                     .organizationName = "Navy",
                                     .jobTitle = "Rear admiral",
                                     .phoneNumbers = {"+1 555 0100", "555-0101"},
                                     .emailAddresses = {"z@example.com", "a@example.com"},
                                     .postalAddresses = {"1 Main St\nArlington, VA 22201", "Hauptstr. 5\n10115 Berlin"},
                                     .birthday = ContactBirthday{1906, 12, 9},
                                     .imageAvailable = true})});
}

} // namespace
} // namespace bridge
