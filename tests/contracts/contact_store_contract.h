#pragma once

#include "base/platform_error.h"
#include "tests/contracts/contact_store_under_test.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>

// What every adapter of ContactStore keeps. Instantiate ContactStoreContract with a maker of the adapter and its
// surroundings. The tests are written for the user's locale being C or English.

namespace bridge {

class ContactStoreContract : public testing::TestWithParam<std::function<std::unique_ptr<ContactStoreUnderTest>()>> {
protected:
    void SetUp() override {
        subject = GetParam()();
        const auto hindrance = subject->hindrance();
        if (!hindrance.empty()) GTEST_SKIP() << hindrance;
    }

    std::vector<std::string> execute(std::vector<ContactChange> changes) {
        return subject->wait(subject->store().execute(std::move(changes)));
    }
    std::string add(Contact contact) { return execute({AddContact{std::move(contact)}}).at(0); }
    std::string add(const char* givenName, const char* familyName = "", const char* organization = "") {
        Contact contact;
        contact.givenName = givenName;
        contact.familyName = familyName;
        contact.organizationName = organization;
        return add(contact);
    }
    std::string addGroup(const char* name) { return execute({AddContactGroup{name}}).at(0); }

    std::vector<Contact> contacts(std::vector<std::string> identifiers) {
        return subject->wait(subject->store().contacts(std::move(identifiers)));
    }
    Contact contact(const std::string& identifier) {
        const auto found = contacts({identifier});
        return found.empty() ? Contact{} : found[0];
    }
    std::vector<ContactGroup> groups() { return subject->wait(subject->store().groups()); }

    std::vector<Contact> visited(ContactPredicate predicate, size_t limit = SIZE_MAX) {
        std::vector<Contact> found;
        subject->wait(subject->store().enumerate(std::move(predicate), [&found, limit](const Contact& each) {
            found.push_back(each);
            return found.size() < limit;
        }));
        return found;
    }
    std::vector<std::string> givenNames(ContactPredicate predicate) {
        std::vector<std::string> names;
        for (const auto& each : visited(std::move(predicate)))
            names.push_back(each.givenName);
        return names;
    }
    std::vector<std::string> named(const char* text) { return givenNames(ContactsMatchingName{text}); }
    std::vector<std::string> members(const std::string& group) { return givenNames(ContactsInGroup{group}); }

    using Names = std::vector<std::string>;
    std::unique_ptr<ContactStoreUnderTest> subject;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ContactStoreContract);

inline Contact contactWithEverything() {
    Contact contact;
    contact.givenName = "Ada";
    contact.middleName = "King";
    contact.familyName = "Lovelace";
    contact.nickname = "Countess";
    contact.organizationName = "Analytical Engines";
    contact.jobTitle = "Programmer";
    contact.phoneNumbers = {{"main", "+44 20 7946 0000"}, {"mobile", "(0) 7700-900123 ext. 5"}, {"work", "112"}};
    contact.emailAddresses = {{"work", "ada@example.org"}, {"home", "ada+home@example.org"}};
    contact.birthday = Birthday{1815, 12, 10};
    return contact;
}

TEST_P(ContactStoreContract, SaysWhatItIs) {
    EXPECT_FALSE(subject->store().description().empty());
}

TEST_P(ContactStoreContract, BeginsEmpty) {
    EXPECT_TRUE(visited(AllContacts{}).empty());
    EXPECT_TRUE(groups().empty());
    EXPECT_TRUE(contacts({}).empty());
}

TEST_P(ContactStoreContract, FindsWhatWasAddedWithEveryField) {
    auto wanted = contactWithEverything();
    wanted.identifier = "not this one";
    const auto identifier = add(wanted);
    EXPECT_NE(identifier, "not this one");
    wanted.identifier = identifier;
    EXPECT_EQ(contact(identifier), wanted);
    EXPECT_EQ(visited(AllContacts{}), std::vector{wanted});
}

TEST_P(ContactStoreContract, FindsWhatWasAddedAfterItWasOpenedAgain) {
    const auto identifier = add(contactWithEverything());
    const auto group = addGroup("Friends");
    execute({AddGroupMember{identifier, group}});
    const auto before = contact(identifier);
    subject->reopen();
    EXPECT_EQ(contact(identifier), before);
    EXPECT_EQ(groups(), (std::vector<ContactGroup>{{group, "Friends"}}));
    EXPECT_EQ(members(group), Names{"Ada"});
    EXPECT_EQ(named("lovelace"), Names{"Ada"});
}

TEST_P(ContactStoreContract, KeepsABirthdayWithoutAYear) {
    auto leapling = contactWithEverything();
    leapling.birthday = Birthday{std::nullopt, 2, 29};
    const auto identifier = add(leapling);
    EXPECT_EQ(contact(identifier).birthday, leapling.birthday);
}

TEST_P(ContactStoreContract, KeepsBirthdaysOfEveryYear) {
    for (const int year : {1, 99, 1000, 1582, 1900, 2024, 9999}) {
        auto one = contactWithEverything();
        one.birthday = Birthday{year, 3, 1};
        EXPECT_EQ(contact(add(one)).birthday, one.birthday) << year;
    }
}

TEST_P(ContactStoreContract, KeepsTheOrderOfNumbersAndAddresses) {
    Contact one;
    one.givenName = "Many";
    for (int number = 0; number < 30; ++number) {
        one.phoneNumbers.push_back({"main", std::to_string(1000 - number * 7)});
        one.emailAddresses.push_back({"work", std::to_string(number * 13 % 30) + "@example.org"});
    }
    const auto found = contact(add(one));
    EXPECT_EQ(found.phoneNumbers, one.phoneNumbers);
    EXPECT_EQ(found.emailAddresses, one.emailAddresses);
}

TEST_P(ContactStoreContract, KeepsLabelsOfTheUsersOwn) {
    Contact one;
    one.givenName = "Labels";
    one.phoneNumbers = {{"boat; “Étoile”, port 3", "1"}, {"home", "2"}};
    one.emailAddresses = {{"sailing club", "club@example.org"}};
    const auto found = contact(add(one));
    EXPECT_EQ(found.phoneNumbers, one.phoneNumbers);
    EXPECT_EQ(found.emailAddresses, one.emailAddresses);
}

TEST_P(ContactStoreContract, KeepsOddTextInEveryField) {
    const std::string texts[] = {
        "👩🏽‍🚀🇵🇹",
        "\u200Fשלום עולם\u200E مرحبا",
        "quote \" ' “” back\\slash \\n \\, \\;",
        "semi;colon,comma:colon=equals%25&amp;<b>",
        "line one\nline two\n\nline four",
        "tab\there",
        "bell\x07 escape\x1b delete\x7f",
        " space around ",
        "BEGIN:VCARD\nEND:VCARD",
        "e\u0301 \u00e9 \u212b",
        "'); DROP TABLE contact; --",
        std::string(10000, 'x'),
        [] {
            std::string text;
            for (int count = 0; count < 2500; ++count)
                text += "😀";
            return text;
        }(),
    };
    for (const auto& text : texts) {
        Contact one;
        one.givenName = one.middleName = one.familyName = one.nickname = one.organizationName = one.jobTitle = text;
        one.phoneNumbers = {{"main", text}};
        one.emailAddresses = {{"work", text}};
        one.identifier = add(one);
        EXPECT_EQ(contact(one.identifier), one) << text;
        const auto group = addGroup(text.c_str());
        const auto all = groups();
        EXPECT_NE(std::find(all.begin(), all.end(), ContactGroup{group, text}), all.end()) << text;
    }
}

TEST_P(ContactStoreContract, AnswersWithContactsInTheGivenOrderEachOnce) {
    const auto one = add("One");
    const auto two = add("Two");
    const auto three = add("Three");
    const auto found = contacts({three, one, "unknown", three, two, one});
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].identifier, three);
    EXPECT_EQ(found[1].identifier, one);
    EXPECT_EQ(found[2].identifier, two);
}

TEST_P(ContactStoreContract, MayBeAskedForAnyBytes) {
    add("Somebody");
    const std::string odd[] = {"",       " ",  "\n",       std::string(1, '\0'),   "\xff\xfe",
                               "' OR 1", "%s", "../../..", std::string(5000, 'a'), "urn:uuid:00000000"};
    for (const auto& identifier : odd) {
        EXPECT_TRUE(contacts({identifier}).empty());
        EXPECT_TRUE(visited(ContactsInGroup{identifier}).empty());
        EXPECT_THROW(execute({DeleteContact{identifier}}), PlatformError);
        EXPECT_THROW(execute({DeleteContactGroup{identifier}}), PlatformError);
    }
    EXPECT_EQ(visited(AllContacts{}).size(), 1u);
}

TEST_P(ContactStoreContract, ReadsWhatAnotherProgramWrote) {
    const auto identifier = subject->put("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:from-elsewhere\r\n"
                                         "N:Perreault;Simon;Pierre;ing. jr;M.Sc.\r\nFN:Simon Perreault\r\n"
                                         "NICKNAME:Sim\r\nORG:Viagénie;Research\r\nTITLE:Engineer\r\n"
                                         "TEL;TYPE=CELL:+1-418-262-6501\r\nEMAIL;TYPE=WORK:simon@example.org\r\n"
                                         "ADR;TYPE=HOME:;;2875 Laurier;Québec;QC;G1V 2M2;Canada\r\n"
                                         "BDAY:1976-02-03\r\nX-SHOE-SIZE:44\r\n"
                                         "PHOTO;ENCODING=b;TYPE=GIF:R0lGODlhAQABAAAAACw=\r\nEND:VCARD\r\n");
    const auto found = contact(identifier);
    EXPECT_EQ(found.identifier, identifier);
    EXPECT_EQ(found.givenName, "Simon");
    EXPECT_EQ(found.middleName, "Pierre");
    EXPECT_EQ(found.familyName, "Perreault");
    EXPECT_EQ(found.nickname, "Sim");
    EXPECT_EQ(found.organizationName, "Viagénie");
    EXPECT_EQ(found.jobTitle, "Engineer");
    EXPECT_EQ(found.phoneNumbers, (std::vector<LabeledValue>{{"mobile", "+1-418-262-6501"}}));
    EXPECT_EQ(found.emailAddresses, (std::vector<LabeledValue>{{"work", "simon@example.org"}}));
    ASSERT_EQ(found.postalAddresses.size(), 1u);
    EXPECT_EQ(found.postalAddresses[0].street, "2875 Laurier");
    EXPECT_EQ(found.postalAddresses[0].city, "Québec");
    EXPECT_EQ(found.postalAddresses[0].state, "QC");
    EXPECT_EQ(found.postalAddresses[0].postalCode, "G1V 2M2");
    EXPECT_EQ(found.postalAddresses[0].country, "Canada");
    EXPECT_EQ(found.birthday, (Birthday{1976, 2, 3}));
    EXPECT_TRUE(found.imageAvailable);
    EXPECT_TRUE(found.isEditable);
    EXPECT_EQ(named("perreault"), Names{"Simon"});
}

// Changing.

TEST_P(ContactStoreContract, WritesTheFieldsThatDiffer) {
    auto one = contactWithEverything();
    one.identifier = add(one);
    one.givenName = "Augusta";
    one.nickname = "";
    one.jobTitle = "Mathematician";
    one.phoneNumbers = {{"main", "999"}};
    one.emailAddresses.clear();
    one.birthday = std::nullopt;
    EXPECT_TRUE(execute({UpdateContact{one}}).empty());
    EXPECT_EQ(contact(one.identifier), one);
    EXPECT_EQ(named("ada"), Names{});
    EXPECT_EQ(named("augusta"), Names{"Augusta"});
    subject->reopen();
    EXPECT_EQ(contact(one.identifier), one);
}

TEST_P(ContactStoreContract, WritesNoPostalAddressAndNoImageInAnUpdate) {
    const auto identifier = subject->put("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:kept\r\nN:Howes;Tim;;;\r\nFN:Tim Howes\r\n"
                                         "ADR;TYPE=WORK:;;501 E. Middlefield Rd.;Mountain View;CA;94043;USA\r\n"
                                         "PHOTO;ENCODING=b;TYPE=GIF:R0lGODlhAQABAAAAACw=\r\nEND:VCARD\r\n");
    auto wanted = contact(identifier);
    const auto addresses = wanted.postalAddresses;
    wanted.postalAddresses = {PostalAddress()};
    wanted.imageAvailable = false;
    wanted.familyName = "Hawes";
    execute({UpdateContact{wanted}});
    const auto found = contact(identifier);
    EXPECT_EQ(found.familyName, "Hawes");
    EXPECT_EQ(found.postalAddresses, addresses);
    EXPECT_TRUE(found.imageAvailable);
}

TEST_P(ContactStoreContract, ChangesNothingInAnUpdateWithoutADifference) {
    const auto identifier =
        subject->put("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:same\r\nN:O\\, Neill;Tip\\;Thomas;Philip;;\r\n"
                     "FN:Tip\r\nTEL;TYPE=WORK,VOICE:1\r\nTEL:2\r\nBDAY:1912-12-09\r\nEND:VCARD\r\n");
    const auto before = contact(identifier);
    execute({UpdateContact{before}});
    EXPECT_EQ(contact(identifier), before);
}

TEST_P(ContactStoreContract, DeletesAContactWithItsMemberships) {
    const auto gone = add("Gone");
    const auto kept = add("Kept");
    const auto group = addGroup("Both");
    execute({AddGroupMember{gone, group}, AddGroupMember{kept, group}});
    execute({DeleteContact{gone}});
    EXPECT_TRUE(contacts({gone}).empty());
    EXPECT_EQ(members(group), Names{"Kept"});
    EXPECT_EQ(named("gone"), Names{});
    subject->reopen();
    EXPECT_TRUE(contacts({gone}).empty());
    EXPECT_EQ(members(group), Names{"Kept"});
}

TEST_P(ContactStoreContract, RefusesToChangeWhatIsGone) {
    auto one = contactWithEverything();
    one.identifier = add(one);
    execute({DeleteContact{one.identifier}});
    EXPECT_THROW(execute({UpdateContact{one}}), PlatformError);
    EXPECT_THROW(execute({DeleteContact{one.identifier}}), PlatformError);
    EXPECT_TRUE(visited(AllContacts{}).empty());
}

// Groups.

TEST_P(ContactStoreContract, KeepsGroupsAlsoOfOneName) {
    const auto one = addGroup("Friends");
    const auto two = addGroup("Friends");
    EXPECT_NE(one, two);
    EXPECT_EQ(groups().size(), 2u);
    execute({DeleteContactGroup{one}});
    EXPECT_EQ(groups(), (std::vector<ContactGroup>{{two, "Friends"}}));
}

TEST_P(ContactStoreContract, KeepsGroupsOfOneNameApart) {
    const auto one = addGroup("Friends");
    const auto two = addGroup("Friends");
    execute({AddGroupMember{add("Left"), one}, AddGroupMember{add("Right"), two}});
    EXPECT_EQ(members(one), Names{"Left"});
    EXPECT_EQ(members(two), Names{"Right"});
}

TEST_P(ContactStoreContract, KeepsTheMembersOfADeletedGroup) {
    const auto ada = add("Ada");
    const auto group = addGroup("Friends");
    execute({AddGroupMember{ada, group}});
    execute({DeleteContactGroup{group}});
    EXPECT_EQ(contact(ada).givenName, "Ada");
    EXPECT_TRUE(members(group).empty());
    EXPECT_THROW(execute({DeleteContactGroup{group}}), PlatformError);
}

TEST_P(ContactStoreContract, TakesMembersInAndOut) {
    const auto ada = add("Ada");
    const auto bob = add("Bob");
    const auto group = addGroup("Friends");
    execute({AddGroupMember{ada, group}, AddGroupMember{bob, group}});
    EXPECT_EQ(members(group), (Names{"Ada", "Bob"}));
    execute({RemoveGroupMember{ada, group}});
    EXPECT_EQ(members(group), Names{"Bob"});
}

TEST_P(ContactStoreContract, TakesAMemberTwiceAndANonMemberOutWithoutAnError) {
    const auto ada = add("Ada");
    const auto bob = add("Bob");
    const auto group = addGroup("Friends");
    execute({AddGroupMember{ada, group}});
    EXPECT_NO_THROW(execute({AddGroupMember{ada, group}, AddGroupMember{ada, group}}));
    EXPECT_NO_THROW(execute({RemoveGroupMember{bob, group}}));
    EXPECT_EQ(members(group), Names{"Ada"});
}

TEST_P(ContactStoreContract, RefusesMembershipsOfWhatIsGone) {
    const auto ada = add("Ada");
    const auto group = addGroup("Friends");
    EXPECT_THROW(execute({AddGroupMember{"nobody", group}}), PlatformError);
    EXPECT_THROW(execute({AddGroupMember{ada, "nothing"}}), PlatformError);
    EXPECT_THROW(execute({RemoveGroupMember{"nobody", group}}), PlatformError);
    EXPECT_THROW(execute({RemoveGroupMember{ada, "nothing"}}), PlatformError);
    EXPECT_TRUE(members(group).empty());
}

TEST_P(ContactStoreContract, ListsMembersInTheOrderOfContacts) {
    const auto group = addGroup("Crew");
    const auto change = [&](const char* given, const char* family) {
        return AddGroupMember{add(given, family), group};
    };
    execute({change("Three", "Zimmer"), change("Two", "Moor"), change("One", "Abel")});
    add("Nobody", "Bach");
    EXPECT_EQ(members(group), (Names{"One", "Two", "Three"}));
}

TEST_P(ContactStoreContract, TakesAHundredMembersInOneBatch) {
    const auto group = addGroup("Crowd");
    std::vector<ContactChange> people;
    for (int number = 0; number < 100; ++number) {
        Contact one;
        one.givenName = "Person " + std::to_string(number);
        people.emplace_back(AddContact{one});
    }
    const auto identifiers = execute(people);
    ASSERT_EQ(identifiers.size(), 100u);
    std::vector<ContactChange> changes;
    for (const auto& identifier : identifiers)
        changes.emplace_back(AddGroupMember{identifier, group});
    execute(changes);
    EXPECT_EQ(members(group).size(), 100u);
}

// Batches.

TEST_P(ContactStoreContract, AnswersABatchWithWhatItAddedInOrder) {
    const auto old = add("Old");
    Contact ada;
    ada.givenName = "Ada";
    Contact bob;
    bob.givenName = "Bob";
    const auto added = execute({AddContact{ada}, AddContactGroup{"Friends"}, DeleteContact{old}, AddContact{bob}});
    ASSERT_EQ(added.size(), 3u);
    EXPECT_EQ(contact(added[0]).givenName, "Ada");
    EXPECT_EQ(groups(), (std::vector<ContactGroup>{{added[1], "Friends"}}));
    EXPECT_EQ(contact(added[2]).givenName, "Bob");
    EXPECT_EQ(std::set<std::string>(added.begin(), added.end()).size(), 3u);
}

TEST_P(ContactStoreContract, MakesNoChangeForAnEmptyBatch) {
    EXPECT_TRUE(execute({}).empty());
}

TEST_P(ContactStoreContract, ChangesNothingWhenOneOfABatchIsBad) {
    auto ada = contactWithEverything();
    ada.identifier = add(ada);
    const auto bob = add("Bob");
    const auto group = addGroup("Friends");
    execute({AddGroupMember{bob, group}});
    auto changed = ada;
    changed.givenName = "Changed";
    Contact newcomer;
    newcomer.givenName = "Newcomer";
    const ContactChange bad[] = {DeleteContact{"nobody"}, AddGroupMember{"nobody", group},
                                 RemoveGroupMember{"nobody", group}, DeleteContactGroup{"nothing"},
                                 AddGroupMember{bob, "nothing"}};
    for (const auto& last : bad) {
        EXPECT_THROW(
            execute({AddContact{newcomer}, AddContactGroup{"New"}, UpdateContact{changed},
                     AddGroupMember{ada.identifier, group}, RemoveGroupMember{bob, group}, DeleteContact{bob}, last}),
            PlatformError);
        EXPECT_EQ(visited(AllContacts{}).size(), 2u);
        EXPECT_EQ(contact(ada.identifier), ada);
        EXPECT_EQ(groups(), (std::vector<ContactGroup>{{group, "Friends"}}));
        EXPECT_EQ(members(group), Names{"Bob"});
        EXPECT_EQ(named("newcomer"), Names{});
    }
}

// Order.

TEST_P(ContactStoreContract, VisitsByFamilyNameThenGivenNameThenOrganization) {
    add("Bea", "Moor");
    add("5", "zimmer");
    add("Ada", "Moor", "Zeta");
    add("3", "Ärger");
    add("Ada", "Moor", "Alpha");
    add("2", "apfel");
    add("4", "Azur");
    std::vector<std::string> found;
    for (const auto& each : visited(AllContacts{}))
        found.push_back(each.familyName + " " + each.givenName + " " + each.organizationName);
    EXPECT_EQ(found,
              (Names{"apfel 2 ", "Ärger 3 ", "Azur 4 ", "Moor Ada Alpha", "Moor Ada Zeta", "Moor Bea ", "zimmer 5 "}));
}

TEST_P(ContactStoreContract, VisitsWhoHasNoFamilyNameByTheNextName) {
    add("Cleo", "Dent");
    add("Cher");
    add("", "", "Bakery");
    add("Ada", "Abel");
    std::vector<std::string> found;
    for (const auto& each : visited(AllContacts{}))
        found.push_back(each.familyName + each.givenName + each.organizationName);
    EXPECT_EQ(found, (Names{"AbelAda", "Bakery", "Cher", "DentCleo"}));
}

TEST_P(ContactStoreContract, VisitsInTheNewOrderAfterAChange) {
    auto one = contact(add("One", "Abel"));
    add("Two", "Moor");
    one.familyName = "Zimmer";
    execute({UpdateContact{one}});
    EXPECT_EQ(givenNames(AllContacts{}), (Names{"Two", "One"}));
}

TEST_P(ContactStoreContract, StopsWhenTheVisitorHasEnough) {
    for (const char* name : {"A", "B", "C", "D", "E"})
        add(name);
    EXPECT_EQ(visited(AllContacts{}, 1).size(), 1u);
    EXPECT_EQ(visited(AllContacts{}, 3).size(), 3u);
    EXPECT_EQ(visited(AllContacts{}, 5).size(), 5u);
    EXPECT_EQ(visited(ContactsMatchingName{"c"}, 1).size(), 1u);
}

TEST_P(ContactStoreContract, VisitsContactsAsTheyAreAnsweredSingly) {
    const auto identifier = add(contactWithEverything());
    const auto group = addGroup("Friends");
    execute({AddGroupMember{identifier, group}});
    EXPECT_EQ(visited(AllContacts{}), contacts({identifier}));
    EXPECT_EQ(visited(ContactsMatchingName{"ada"}), contacts({identifier}));
    EXPECT_EQ(visited(ContactsInGroup{group}), contacts({identifier}));
}

TEST_P(ContactStoreContract, PassesOnWhatTheVisitorThrows) {
    add("Ada");
    auto task = subject->store().enumerate(AllContacts{}, [](const Contact&) -> bool { throw PlatformError("mine"); });
    EXPECT_THROW(subject->wait(std::move(task)), PlatformError);
    EXPECT_EQ(givenNames(AllContacts{}), Names{"Ada"});
}

// Names.

TEST_P(ContactStoreContract, FindsNamesByTheBeginningsOfTheirWords) {
    add(contactWithEverything());
    add("Bob", "Adamson");
    for (const char* text : {"ada", "ADA", "Ád", "a", "ada love", "love ada", "LOVELACE, Ada", "king", "count",
                             "engines", "analytical ada", "  ada  ", "ada lovelace king countess analytical engines"})
        EXPECT_NE(named(text), Names{}) << text;
    EXPECT_EQ(named("ada"), (Names{"Bob", "Ada"}));
    EXPECT_EQ(named("ada bob"), Names{"Bob"});
    EXPECT_EQ(named("love"), Names{"Ada"});
    for (const char* text : {"da", "velace", "adaa", "ada x", "lovelaces"})
        EXPECT_EQ(named(text), Names{}) << text;
}

TEST_P(ContactStoreContract, FindsNobodyByATextWithoutAWord) {
    add("Ada");
    for (const char* text : {"", " ", "\n\t", "-", "!?", "…", "\u200B"})
        EXPECT_EQ(named(text), Names{}) << text;
}

TEST_P(ContactStoreContract, LooksAtNoNumberAddressOrTitleForAName) {
    add(contactWithEverything());
    for (const char* text : {"44", "7946", "example", "programmer", "org", "work", "1815"})
        EXPECT_EQ(named(text), Names{}) << text;
}

TEST_P(ContactStoreContract, FindsNamesOfEveryScript) {
    add("José", "Núñez");
    add("太郎", "山田");
    add("Анна", "Ёлкина");
    add("Γιώργος", "Παπαδόπουλος");
    add("מרים", "כהן");
    add("민준", "김");
    add("Anne-Marie", "O’Brien");
    EXPECT_EQ(named("jose nunez"), Names{"José"});
    EXPECT_EQ(named("JOSÉ"), Names{"José"});
    EXPECT_EQ(named("山田"), Names{"太郎"});
    EXPECT_EQ(named("山"), Names{"太郎"});
    EXPECT_EQ(named("анна елк"), Names{"Анна"});
    EXPECT_EQ(named("γιωργος"), Names{"Γιώργος"});
    EXPECT_EQ(named("כה"), Names{"מרים"});
    EXPECT_EQ(named("김"), Names{"민준"});
    EXPECT_EQ(named("marie"), Names{"Anne-Marie"});
    EXPECT_EQ(named("anne-m"), Names{"Anne-Marie"});
    EXPECT_EQ(named("o’brien"), Names{"Anne-Marie"});
}

TEST_P(ContactStoreContract, MayBeSearchedForAnyBytes) {
    add("Ada");
    const std::string odd[] = {"\xff\xfe",   std::string("ada\0x", 5), "%", "_",           "ada*", "\"ada", "(",
                               "ada' OR '1", std::string(10000, 'a'),  "😀", "\xed\xa0\x80"};
    for (const auto& text : odd)
        EXPECT_NO_THROW(visited(ContactsMatchingName{text})) << text;
}

// Size, failure, dropping.

TEST_P(ContactStoreContract, HoldsTenThousandContacts) {
    constexpr int count = 10000;
    std::vector<ContactChange> changes;
    for (int number = 0; number < count; ++number) {
        Contact one;
        one.givenName = "Given" + std::to_string(number);
        one.familyName = "Family" + std::to_string(number % 100);
        one.phoneNumbers = {{"main", std::to_string(number)}};
        changes.emplace_back(AddContact{one});
    }
    const auto identifiers = execute(std::move(changes));
    ASSERT_EQ(identifiers.size(), static_cast<size_t>(count));
    EXPECT_EQ(std::set<std::string>(identifiers.begin(), identifiers.end()).size(), identifiers.size());
    EXPECT_EQ(visited(AllContacts{}).size(), identifiers.size());
    EXPECT_EQ(visited(AllContacts{}, 50).size(), 50u);
    EXPECT_EQ(named("given7777"), Names{"Given7777"});
    EXPECT_EQ(visited(ContactsMatchingName{"family42"}).size(), 100u);
    EXPECT_EQ(contacts(identifiers).size(), identifiers.size());
}

TEST_P(ContactStoreContract, ThrowsWhenWhatItStandsOnIsGone) {
    auto one = contactWithEverything();
    one.identifier = add(one);
    const auto group = addGroup("Friends");
    subject->lose();
    EXPECT_THROW(contacts({one.identifier}), PlatformError);
    EXPECT_THROW(visited(AllContacts{}), PlatformError);
    EXPECT_THROW(visited(ContactsMatchingName{"ada"}), PlatformError);
    EXPECT_THROW(visited(ContactsInGroup{group}), PlatformError);
    EXPECT_THROW(groups(), PlatformError);
    EXPECT_THROW(add("New"), PlatformError);
    EXPECT_THROW(execute({UpdateContact{one}}), PlatformError);
    EXPECT_THROW(addGroup("New"), PlatformError);
    subject->restore();
    EXPECT_EQ(contact(one.identifier), one);
    EXPECT_EQ(groups().size(), 1u);
}

TEST_P(ContactStoreContract, DoesNothingForATaskThatNeverRan) {
    Contact one;
    one.givenName = "Never";
    { auto dropped = subject->store().execute({AddContact{one}}); }
    EXPECT_TRUE(visited(AllContacts{}).empty());
}

TEST_P(ContactStoreContract, DoesAllOrNothingForATaskThatIsDropped) {
    Contact one;
    one.givenName = "Maybe";
    std::vector<ContactChange> changes;
    for (int count = 0; count < 20; ++count)
        changes.emplace_back(AddContact{one});
    {
        auto dropped = subject->store().execute(std::move(changes));
        dropped.start();
    }
    const auto found = visited(AllContacts{}).size();
    EXPECT_TRUE(found == 0 || found == 20) << found;
    subject->reopen();
    const auto later = visited(AllContacts{}).size();
    EXPECT_TRUE(later == 0 || later == 20) << later;
}

} // namespace bridge
