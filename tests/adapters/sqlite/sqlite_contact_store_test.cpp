#include "adapters/sqlite/sqlite_contact_store.h"

#include "base/event_loop.h"
#include "tests/adapters/sqlite/still_clock.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace bridge {
namespace {

using testing::HasSubstr;

class SqliteContactStoreTest : public testing::Test {
protected:
    std::unique_ptr<SqliteContactStore> open() { return std::make_unique<SqliteContactStore>(path, clock); }
    std::vector<std::string> execute(SqliteContactStore& store, std::vector<ContactChange> changes) {
        return loop.runUntilDone(store.execute(std::move(changes)));
    }
    std::vector<std::string> names(SqliteContactStore& store, ContactPredicate predicate) {
        std::vector<std::string> found;
        loop.runUntilDone(store.enumerate(std::move(predicate), [&found](const Contact& each) {
            found.push_back(each.familyName);
            return true;
        }));
        return found;
    }
    static AddContact contact(const char* familyName) {
        Contact made;
        made.familyName = familyName;
        return {made};
    }
    std::string textOf(const std::string& identifier) {
        Database database(path, "contacts", {});
        return database.value<std::string>("SELECT text FROM contact WHERE id = ?", identifier).value_or("");
    }
    std::string plan(std::string_view sql) {
        Database database(path, "contacts", {});
        std::string text;
        auto row = database.query("EXPLAIN QUERY PLAN " + std::string(sql));
        while (row.step())
            text.append(row.text(3)).append("\n");
        return text;
    }

    TemporaryFolder folder;
    const std::string path = folder.file("contacts.db");
    StillClock clock;
    EventLoop loop;
};

TEST_F(SqliteContactStoreTest, OpensNothingBeforeItsFirstCall) {
    open();
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SqliteContactStoreTest, KeepsItsFileForTheUserAlone) {
    auto store = open();
    execute(*store, {contact("Abel")});
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(SqliteContactStoreTest, SaysThatItsFileIsDamagedAndKeepsItAside) {
    execute(*open(), {contact("Abel")});
    putFile(path, std::string(20'000, 'g'));
    auto store = open();
    for (int time = 0; time < 2; ++time)
        try {
            names(*store, AllContacts{});
            FAIL();
        } catch (const PlatformError& error) {
            EXPECT_THAT(error.what(), HasSubstr("The file of the contacts on this computer is damaged. It is kept as"));
        }
    EXPECT_EQ(names(*open(), AllContacts{}), std::vector<std::string>{});
}

TEST_F(SqliteContactStoreTest, KeepsWhatAContactHasNoFieldFor) {
    auto store = open();
    importContacts(*store, "BEGIN:VCARD\nVERSION:4.0\nUID:u\nN:Doe;John;;Mr.;\nFN:John\nX-SHOE-SIZE:44\nNOTE:a\\, b\n"
                           "PHOTO:data:image/png;base64,AAAA\nADR;TYPE=home:;;1;;;;\nTEL;PREF=1;X-ID=7:1\nEND:VCARD\n");
    Contact john;
    loop.runUntilDone(store->enumerate(AllContacts{}, [&](const Contact& each) {
        john = each;
        return true;
    }));
    john.familyName = "Roe";
    john.emailAddresses = {{"work", "a@b"}};
    execute(*store, {UpdateContact{john}});
    const auto text = textOf(john.identifier);
    for (const char* line :
         {"X-SHOE-SIZE:44", "NOTE:a\\, b", "PHOTO:data:image/png;base64,AAAA", "ADR;TYPE=home:;;1;;;;",
          "TEL;PREF=1;X-ID=7:1", "N:Roe;John;;Mr.;", "UID:u", "EMAIL;TYPE=work:a@b"})
        EXPECT_THAT(text, HasSubstr(line));
}

TEST_F(SqliteContactStoreTest, IsUsedByTwoProgramsAtOnce) {
    auto one = open();
    auto other = open();
    const auto group = execute(*one, {contact("Abel"), AddContactGroup{"G"}}).at(1);
    const auto added = execute(*other, {contact("Baum")}).at(0);
    execute(*one, {AddGroupMember{added, group}});
    EXPECT_EQ(names(*other, ContactsInGroup{group}), std::vector<std::string>{"Baum"});
    EXPECT_EQ(names(*one, ContactsMatchingName{"b"}), std::vector<std::string>{"Baum"});
}

TEST_F(SqliteContactStoreTest, OrdersAnewWhenTheRulesAreOthers) {
    auto store = open();
    const auto added = execute(*store, {contact("Zoe"), contact("Abel"), AddContactGroup{"G"}});
    execute(*store, {AddGroupMember{added[0], added[2]}, AddGroupMember{added[1], added[2]}});
    {
        // As another language may have left it.
        Database database(path, "contacts", {});
        database.run("UPDATE contact SET sort_key = 'x' || key");
        database.run("UPDATE member SET sort_key = 'x' || contact");
        database.run("DELETE FROM word_beginning");
        database.run("UPDATE name_rules SET rules = 'others'");
    }
    EXPECT_EQ(names(*store, AllContacts{}), (std::vector<std::string>{"Abel", "Zoe"}));
    EXPECT_EQ(names(*store, ContactsInGroup{added[2]}), (std::vector<std::string>{"Abel", "Zoe"}));
    EXPECT_EQ(names(*store, ContactsMatchingName{"zo"}), std::vector<std::string>{"Zoe"});
    execute(*store, {DeleteContact{added[0]}});
    EXPECT_EQ(names(*store, ContactsMatchingName{"zo"}), std::vector<std::string>{});
}

TEST_F(SqliteContactStoreTest, LeavesNoWordOfWhatIsGone) {
    auto store = open();
    const auto added = execute(*store, {contact("Abel Baum Cäsar"), contact("Dent")});
    Contact changed;
    changed.identifier = added[1];
    changed.familyName = "Ender";
    execute(*store, {DeleteContact{added[0]}, UpdateContact{changed}});
    Database database(path, "contacts", {});
    EXPECT_EQ(database.value<int64_t>("SELECT count(*) FROM word_beginning"), 5);
}

TEST_F(SqliteContactStoreTest, FindsWordsLongerThanItsIndexKeeps) {
    auto store = open();
    execute(*store, {contact("Wolfeschlegelsteinhausen"), contact("Wolfeschlegelberger")});
    EXPECT_EQ(names(*store, ContactsMatchingName{"wolfeschlegelst"}),
              std::vector<std::string>{"Wolfeschlegelsteinhausen"});
    EXPECT_EQ(names(*store, ContactsMatchingName{"wolfeschlegel"}).size(), 2u);
    EXPECT_EQ(names(*store, ContactsMatchingName{"wolfeschlegelx"}).size(), 0u);
}

TEST_F(SqliteContactStoreTest, SearchesManyWordsAtOnce) {
    auto store = open();
    execute(*store, {contact("a1 a2 a3 b"), contact("a1 a2 c"), contact("a1 b")});
    EXPECT_EQ(names(*store, ContactsMatchingName{"a1 a2"}).size(), 2u);
    EXPECT_EQ(names(*store, ContactsMatchingName{"b a1 a a a a a1 b"}).size(), 2u);
    EXPECT_EQ(names(*store, ContactsMatchingName{"b a2"}).size(), 1u);
    EXPECT_EQ(names(*store, ContactsMatchingName{"a1 x"}).size(), 0u);
}

TEST_F(SqliteContactStoreTest, KeepsANameOfAHundredThousandWords) {
    std::string name;
    for (int number = 0; number < 100'000; ++number)
        name += std::to_string(number) + " ";
    auto store = open();
    execute(*store, {contact(name.c_str())});
    EXPECT_EQ(names(*store, ContactsMatchingName{"7 99"}).size(), 1u);
    EXPECT_EQ(names(*store, ContactsMatchingName{name.substr(0, 2000)}).size(), 1u);
    EXPECT_EQ(names(*store, ContactsMatchingName{name + "x"}).size(), 0u);
}

TEST_F(SqliteContactStoreTest, WalksAnIndexInEveryOrderThatItAnswers) {
    auto store = open();
    names(*store, AllContacts{});
    for (const char* sql :
         {"SELECT id, summary FROM contact ORDER BY sort_key, key",
          "SELECT sort_key, contact FROM word_beginning WHERE beginning = 'a' "
          "AND (sort_key, contact) >= ('a', 1) ORDER BY sort_key, contact LIMIT 1",
          "SELECT contact.id, summary FROM contact_group JOIN member ON \"group\" = contact_group.key "
          "JOIN contact ON contact.key = contact WHERE contact_group.id = 'a' ORDER BY member.sort_key, contact"}) {
        const auto steps = plan(sql);
        EXPECT_THAT(steps, testing::AnyOf(HasSubstr("USING INDEX"), HasSubstr("USING PRIMARY KEY"))) << sql;
        EXPECT_THAT(steps, testing::Not(HasSubstr("TEMP B-TREE"))) << sql;
    }
}

} // namespace
} // namespace bridge
