#include "tests/adapters/eds/eds_contact_test.h"

// Contacts as other programs of the desktop write them.

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::Not;

using EdsContactsTest = EdsContactTest;

TEST_F(EdsContactsTest, KeepWhatOnlyOthersKnow) {
    const auto john = put(personal, "john",
                          "N:Doe;John;;Mr.;\r\nFN:Mr. John Doe\r\nX-EVOLUTION-SPOUSE:Jane\r\nX-SHOE-SIZE:44\r\n"
                          "NOTE:a\\, b\r\nitem1.TEL;X-ID=7:1\r\nitem1.X-ABLabel:boat\r\n"
                          "ADR;TYPE=HOME:;;1;;;;\r\nCATEGORIES:a,b\r\n");
    auto wanted = contact(john).value();
    wanted.familyName = "Roe";
    wanted.emailAddresses = {{"work", "a@b"}};
    wanted.phoneNumbers.push_back({"mobile", "2"});
    execute({UpdateContact{wanted}});
    EXPECT_EQ(contact(john), wanted);
    const auto text = BookNeighbour::stored(personal, "john");
    for (const char* line :
         {"N:Roe;John;;Mr.;", "X-EVOLUTION-SPOUSE:Jane", "X-SHOE-SIZE:44", "NOTE:a\\, b", "item1.TEL;X-ID=7:1",
          "item1.X-ABLabel:boat", "ADR;TYPE=HOME:;;1;;;;", "CATEGORIES:a,b", "EMAIL;TYPE=work:a@b"})
        EXPECT_THAT(text, HasSubstr(line));
}

TEST_F(EdsContactsTest, AreFiledUnderTheirNewNameUnlessTheUserChoseAnother) {
    const std::string names = "N:Doe;John;;;\r\nFN:John Doe\r\nORG:Firm\r\n";
    const std::map<std::string, std::string> filed{
        {"Doe\\, John", "Roe\\, John"}, {"John Doe", "John Roe"}, {"Firm", "Firm"}, {"Plumber", "Plumber"}};
    for (const auto& [before, after] : filed) {
        const auto john = put(personal, "john", names + "X-EVOLUTION-FILE-AS:" + before + "\r\n");
        auto wanted = contact(john).value();
        wanted.familyName = "Roe";
        execute({UpdateContact{wanted}});
        EXPECT_THAT(BookNeighbour::stored(personal, "john"), HasSubstr("X-EVOLUTION-FILE-AS:" + after + "\r\n"));
        execute({DeleteContact{john}});
    }
}

TEST_F(EdsContactsTest, KeepTheirPicture) {
    const auto john = put(personal, "john",
                          "N:Doe;John;;;\r\nFN:John Doe\r\n"
                          "PHOTO;ENCODING=b;TYPE=GIF:R0lGODlhAQABAAAAACw=\r\n");
    auto wanted = contact(john).value();
    EXPECT_TRUE(wanted.imageAvailable);
    wanted.givenName = "Jack";
    execute({UpdateContact{wanted}});
    EXPECT_EQ(contact(john), wanted);
    EXPECT_THAT(BookNeighbour::stored(personal, "john"), HasSubstr("PHOTO"));
}

TEST_F(EdsContactsTest, HaveBirthdaysWithAndWithoutAYear) {
    EXPECT_EQ(contact(put(personal, "a", "FN:A\r\nBDAY:--05-06\r\n"))->birthday, (Birthday{std::nullopt, 5, 6}));
    EXPECT_EQ(contact(put(personal, "b", "FN:B\r\nBDAY:--0506\r\n"))->birthday, (Birthday{std::nullopt, 5, 6}));
    EXPECT_EQ(contact(put(personal, "c", "FN:C\r\nBDAY:1980-05-06\r\n"))->birthday, (Birthday{1980, 5, 6}));
    EXPECT_EQ(contact(put(personal, "d", "FN:D\r\nBDAY:19800506\r\n"))->birthday, (Birthday{1980, 5, 6}));
    EXPECT_EQ(contact(put(personal, "e", "FN:E\r\nBDAY:soon\r\n"))->birthday, std::nullopt);
}

TEST_F(EdsContactsTest, AreFoundByNamesThatTheServiceComparesOtherwise) {
    put(personal, "a", "N:Wałęsa;Łukasz;;;\r\nFN:L. W.\r\nX-EVOLUTION-FILE-AS:L. W.\r\nORG:Straße\r\n");
    for (const char* text : {"WAŁESA łu", "strasse", "ŁUKASZ STRAS"})
        EXPECT_EQ(names(ContactsMatchingName{text}), Names{"Łukasz"}) << text;
    EXPECT_EQ(names(ContactsMatchingName{"w l"}), Names{});
}

TEST_F(EdsContactsTest, MayHaveAnyIdentifierThere) {
    for (const std::string uid : {"a b", "pas-id-65\"4", "(or)", "a/b", "100%", "ä🦊", "\\'", "UP", "up"}) {
        const auto one = put(personal, uid, "FN:Somebody\r\nN:;" + uid.substr(0, 2) + ";;;\r\n");
        ASSERT_TRUE(contact(one)) << uid;
        EXPECT_EQ(contact(one)->identifier, one);
        auto wanted = contact(one).value();
        wanted.nickname = "Changed";
        execute({UpdateContact{wanted}});
        EXPECT_EQ(contact(one), wanted) << uid;
        execute({DeleteContact{one}});
        EXPECT_FALSE(contact(one)) << uid;
    }
}

TEST_F(EdsContactsTest, ThatMakeNoSenseHideNoOthers) {
    put(personal, "a", "FN:\r\n");
    put(personal, "b", "garbage\r\nN:;Whole;;;\r\nBDAY:x\r\nTEL;TYPE=:\r\n");
    EXPECT_THAT(names(), testing::Contains("Whole"));
}

TEST_F(EdsContactsTest, FollowWhatAnotherProgramDoes) {
    const auto one = put(personal, "one", "N:;One;;;\r\n");
    EXPECT_EQ(names(), Names{"One"});
    BookNeighbour::remove(personal, "one");
    EXPECT_EQ(names(), Names{});
    EXPECT_EQ(failure([&] { execute({DeleteContact{one}}); }),
              "There is no contact “system-address-book/one” in the address books.");
}

TEST_F(EdsContactsTest, OfTwoChangesAtOnceAreBothMade) {
    const auto one = add("One");
    auto renamed = contact(one).value();
    renamed.familyName = "Renamed";
    auto first = store().execute({UpdateContact{renamed}});
    std::vector<ContactChange> addition{AddContact{named("Two")}};
    auto second = store().execute(addition);
    first.start();
    second.start();
    while (!first.done() || !second.done())
        setting->loop().waitOnce();
    first.take();
    EXPECT_EQ(contact(second.take().at(0))->givenName, "Two");
    EXPECT_EQ(contact(one), renamed);
}

TEST_F(EdsContactsTest, AreNotWrittenWithWhatIsNoText) {
    for (const auto& text : {std::string("a\0b", 3), std::string("\xff")}) {
        EXPECT_EQ(failure([&] { add(text); }), "What is to be written is not text.");
        EXPECT_EQ(failure([&] { addGroup(text); }), "What is to be written is not text.");
    }
    EXPECT_TRUE(names().empty());
}

// Groups.

TEST_F(EdsContactsTest, AreGroupedByTheListsOfOthers) {
    put(personal, "ada", "N:;Ada;;;\r\nEMAIL:ada@example.org\r\n");
    put(personal, "bob", "N:;Bob;;;\r\n");
    const auto list =
        put(personal, "list",
            "FN:Friends\r\nX-EVOLUTION-LIST:TRUE\r\n"
            "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=ada;X-EVOLUTION-DEST-EMAIL-NUM=0:Ada <ada@example.org>\r\n"
            "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=ada;X-EVOLUTION-DEST-EMAIL-NUM=1:Ada <a@example.org>\r\n"
            "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=bob:Bob <>\r\n"
            "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=gone:Gone <gone@example.org>\r\n"
            "EMAIL:someone@example.org\r\n");
    EXPECT_EQ(wait(store().groups()), (std::vector<ContactGroup>{{list, "Friends"}}));
    EXPECT_EQ(members(list), (Names{"Ada", "Bob"}));
    EXPECT_EQ(names(), (Names{"Ada", "Bob"}));
    EXPECT_FALSE(contact(list));
    EXPECT_NE(failure([&] { execute({DeleteContact{list}}); }), "");

    execute({RemoveGroupMember{identifier(personal, "ada"), list}});
    EXPECT_EQ(members(list), Names{"Bob"});
    const auto text = BookNeighbour::stored(personal, "list");
    EXPECT_THAT(text, Not(HasSubstr("ada")));
    EXPECT_THAT(text, HasSubstr("EMAIL:someone@example.org"));
}

TEST_F(EdsContactsTest, AreGroupedInListsThatOthersKnow) {
    const auto group = addGroup("Friends; and “more”");
    put(personal, "ada", "N:Lovelace;Ada;;;\r\nEMAIL:ada@example.org\r\n");
    put(personal, "bob", "N:;Bob;;;\r\n");
    execute({AddGroupMember{identifier(personal, "ada"), group}, AddGroupMember{identifier(personal, "bob"), group}});
    EXPECT_EQ(BookNeighbour::list(personal, uidOf(group)),
              (std::vector<std::string>{"Friends; and “more”", "ada: Ada Lovelace <ada@example.org>", "bob: Bob <>"}));
}

TEST_F(EdsContactsTest, OfOtherBooksMayBelongToAGroup) {
    const auto club = BookNeighbour::addLocalBook("Club");
    const auto group = addGroup("Friends");
    const auto ada = add("Ada");
    const auto eve = put(club, uidOf(ada), "N:;Eve;;;\r\n"); // another person of the same UID
    execute({AddGroupMember{eve, group}});
    EXPECT_EQ(members(group), Names{"Eve"});
    execute({AddGroupMember{ada, group}, RemoveGroupMember{eve, group}});
    EXPECT_EQ(members(group), Names{"Ada"});
    execute({AddGroupMember{eve, group}});
    BookNeighbour::setEnabled(club, false);
    EXPECT_EQ(members(group), Names{"Ada"});
}

} // namespace
} // namespace bridge
