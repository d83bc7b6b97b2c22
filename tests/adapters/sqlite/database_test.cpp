#include "adapters/sqlite/database.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>

namespace bridge {
namespace {

class DatabaseTest : public testing::Test {
protected:
    DatabaseTest() {
        putFile(path, "");
        database.emplace(path, "things", DatabaseOptions{std::chrono::milliseconds(0)});
        database->script("CREATE TABLE thing(key INTEGER PRIMARY KEY, name TEXT UNIQUE, number INTEGER)");
    }
    template <typename Action> static std::optional<DatabaseError> failureOf(Action action) {
        try {
            action();
        } catch (const DatabaseError& error) {
            return error;
        }
        return std::nullopt;
    }
    int64_t count() { return database->value<int64_t>("SELECT count(*) FROM thing").value(); }

    TemporaryFolder folder;
    const std::string path = folder.file("things.db");
    std::optional<Database> database;
};

TEST_F(DatabaseTest, KeepsEveryByteOfAText) {
    const std::string texts[] = {"",
                                 std::string("zero\0byte", 9),
                                 std::string("\0", 1),
                                 "\xf0\x9f\x90\xb1 \xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d",
                                 "\xff not UTF-8",
                                 "Robert'); DROP TABLE thing;--",
                                 std::string(3'000'000, 'x')};
    for (const auto& text : texts) {
        database->run("INSERT INTO thing(name) VALUES(?)", text);
        EXPECT_EQ(database->value<std::string>("SELECT name FROM thing WHERE name = ?", text), text);
    }
    EXPECT_EQ(count(), 7);
}

TEST_F(DatabaseTest, TellsAnEmptyTextFromNone) {
    database->run("INSERT INTO thing(name, number) VALUES(?, ?)", std::string_view(), std::optional<int>());
    auto row = database->query("SELECT name, number, key FROM thing");
    ASSERT_TRUE(row.step());
    EXPECT_EQ(row.column<std::optional<std::string>>(0), "");
    EXPECT_EQ(row.column<std::optional<int>>(1), std::nullopt);
    EXPECT_EQ(row.column<std::optional<int>>(2), 1);
    EXPECT_FALSE(row.step());
}

TEST_F(DatabaseTest, KeepsTheFarthestNumbers) {
    for (const auto number : {std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max()})
        EXPECT_EQ(database->value<int64_t>("SELECT ?", number), number);
}

TEST_F(DatabaseTest, AStatementCanBeUsedWithinItsOwnUse) {
    for (int number = 0; number < 3; ++number)
        database->run("INSERT INTO thing(number) VALUES(?)", number);
    constexpr auto all = "SELECT number FROM thing ORDER BY key";
    int pairs = 0;
    for (auto outer = database->query(all); outer.step();)
        for (auto inner = database->query(all); inner.step();)
            ++pairs;
    EXPECT_EQ(pairs, 9);
}

TEST_F(DatabaseTest, AStatementForgetsItsValues) {
    constexpr auto insert = "INSERT INTO thing(name, number) VALUES(?, ?)";
    database->run(insert, "first", 1);
    database->run(insert, "second");
    EXPECT_EQ(database->value<std::optional<int>>("SELECT number FROM thing WHERE name = 'second'"),
              std::optional<std::optional<int>>(std::optional<int>()));
}

TEST_F(DatabaseTest, ATransactionThatIsNotCommittedLeavesNothing) {
    {
        Transaction transaction(*database, Transaction::Kind::write);
        database->run("INSERT INTO thing(name) VALUES('one')");
    }
    EXPECT_EQ(count(), 0);
    Transaction transaction(*database, Transaction::Kind::write);
    database->run("INSERT INTO thing(name) VALUES('one')");
    transaction.commit();
    EXPECT_EQ(count(), 1);
}

TEST_F(DatabaseTest, SaysThatAnotherProgramHoldsIt) {
    Database other(path, "things", {});
    std::optional<Transaction> held;
    held.emplace(other, Transaction::Kind::write);
    const auto write = [&] { Transaction transaction(*database, Transaction::Kind::write); };
    const auto failure = failureOf(write);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->trouble(), DatabaseTrouble::busy);
    EXPECT_STREQ(failure->what(), "The things are in use by another program. Try again in a moment.");
    held.reset();
    EXPECT_FALSE(failureOf(write));
}

TEST_F(DatabaseTest, SaysThatThereIsNoRoom) {
    database->script("PRAGMA max_page_count = 10");
    const auto failure =
        failureOf([&] { database->run("INSERT INTO thing(name) VALUES(?)", std::string(100'000, 'x')); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->trouble(), DatabaseTrouble::full);
    EXPECT_STREQ(failure->what(), "The things can't be saved: the disk is full.");
    database->run("INSERT INTO thing(name) VALUES('small')");
    EXPECT_EQ(count(), 1);
}

TEST_F(DatabaseTest, SaysThatAValueIsThereAlready) {
    database->run("INSERT INTO thing(name) VALUES('one')");
    const auto failure = failureOf([&] { database->run("INSERT INTO thing(name) VALUES('one')"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->trouble(), DatabaseTrouble::conflict);
}

TEST_F(DatabaseTest, SaysThatTheFileIsReadOnly) {
    database->script("PRAGMA query_only = ON");
    const auto failure = failureOf([&] { database->run("INSERT INTO thing(name) VALUES('one')"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->trouble(), DatabaseTrouble::readOnly);
    EXPECT_STREQ(failure->what(), "The things can't be changed: their file or its folder is read-only.");
}

TEST_F(DatabaseTest, SaysThatTheFileIsNoDatabase) {
    putFile(folder.file("text"), std::string(10'000, 't'));
    const auto failure = failureOf([&] {
        Database text(folder.file("text"), "things", {});
        text.value<int64_t>("SELECT count(*) FROM sqlite_schema");
    });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->trouble(), DatabaseTrouble::damaged);
    EXPECT_STREQ(failure->what(), "The file of the things is damaged.");
}

TEST_F(DatabaseTest, DoesNotMakeAFileThatIsNotThere) {
    const auto failure = failureOf([&] { Database missing(folder.file("missing"), "things", {}); });
    ASSERT_TRUE(failure);
    EXPECT_STREQ(failure->what(), "The file of the things can't be used: No such file or directory");
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST_F(DatabaseTest, HoldsToReferences) {
    database->script("CREATE TABLE part(thing INTEGER REFERENCES thing ON DELETE CASCADE)");
    EXPECT_TRUE(failureOf([&] { database->run("INSERT INTO part VALUES(7)"); }));
    database->run("INSERT INTO thing(key) VALUES(7)");
    database->run("INSERT INTO part VALUES(7)");
    database->run("DELETE FROM thing WHERE key = 7");
    EXPECT_EQ(database->value<int64_t>("SELECT count(*) FROM part"), 0);
}

} // namespace
} // namespace bridge
