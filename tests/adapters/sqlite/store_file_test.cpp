#include "adapters/sqlite/store_file.h"

#include "tests/adapters/sqlite/still_clock.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_system_call.h"

#include <array>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;

constexpr std::array firstVersion{"CREATE TABLE thing(name TEXT NOT NULL)"};
constexpr std::array bothVersions{firstVersion[0], "ALTER TABLE thing ADD COLUMN number INTEGER DEFAULT 7"};

void fill(Database& database) {
    for (int number = 0; number < 500; ++number)
        database.run("INSERT INTO thing(name) VALUES(?)", "thing " + std::to_string(number));
}
constexpr StoreSchema schema{"things", 4711, firstVersion, fill};
constexpr StoreSchema newSchema{"things", 4711, bothVersions, fill};
constexpr StoreSchema otherSchema{"others", 815, firstVersion, fill};

class StoreFileTest : public testing::Test {
protected:
    std::unique_ptr<StoreFile> open(const StoreSchema& wanted = schema) {
        return std::make_unique<StoreFile>(path, wanted, clock, DatabaseOptions{std::chrono::milliseconds(0)},
                                           [](Database&) {});
    }
    static int64_t count(StoreFile& file) {
        return file.read(
            [](Database& database) { return database.value<int64_t>("SELECT count(name) FROM thing").value(); });
    }
    static void add(StoreFile& file, const std::string& name) {
        file.write([&](Database& database) { database.run("INSERT INTO thing(name) VALUES(?)", name); });
    }
    // "" when it works.
    template <typename Action> static std::string failureOf(Action action) {
        try {
            action();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }
    std::string failureOf(StoreFile& file) {
        return failureOf([&] { count(file); });
    }
    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.push_back(entry.path().filename());
        return names;
    }
    static mode_t modeOf(const std::string& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }

    TemporaryFolder folder;
    const std::string path = folder.file("things.db");
    StillClock clock;
};

TEST_F(StoreFileTest, BeginsWithItsFirstContents) {
    auto file = open();
    EXPECT_EQ(count(*file), 500);
    add(*file, "mine");
    EXPECT_EQ(count(*file), 501);
    file = open();
    EXPECT_EQ(count(*file), 501);
}

TEST_F(StoreFileTest, OpensNothingBeforeItsFirstUse) {
    open();
    EXPECT_TRUE(names().empty());
}

TEST_F(StoreFileTest, IsTheUsersAlone) {
    const auto former = umask(0);
    auto file = open();
    add(*file, "mine");
    for (const auto* suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(modeOf(path + suffix), 0600u) << suffix;
    umask(former);
}

TEST_F(StoreFileTest, IsTakenBackFromOthersWhenItIsOpened) {
    count(*open());
    chmod(path.c_str(), 0664);
    count(*open());
    EXPECT_EQ(modeOf(path), 0600u);
}

TEST_F(StoreFileTest, MakesItsFolderForTheUserAlone) {
    StoreFile file(folder.file("some/where/things.db"), schema, clock, {}, [](Database&) {});
    EXPECT_EQ(count(file), 500);
    EXPECT_EQ(modeOf(folder.file("some")), 0700u);
    EXPECT_EQ(modeOf(folder.file("some/where")), 0700u);
}

TEST_F(StoreFileTest, LeavesOneFileBehind) {
    add(*open(), "mine");
    EXPECT_THAT(names(), UnorderedElementsAre("things.db"));
}

TEST_F(StoreFileTest, TwoThatBeginAtOnceShareOneStore) {
    auto file = open();
    auto other = open();
    add(*file, "mine");
    add(*other, "theirs");
    EXPECT_EQ(count(*file), 502);
    createStore(path, schema, {}); // another program that saw no store a moment ago
    EXPECT_EQ(count(*file), 502);
}

TEST_F(StoreFileTest, GoesForwardToANewVersion) {
    add(*open(), "mine");
    auto file = open(newSchema);
    EXPECT_EQ(count(*file), 501);
    EXPECT_EQ(file->read([](Database& database) {
        return database.value<int64_t>("SELECT number FROM thing WHERE name = 'mine'");
    }),
              7);
}

TEST_F(StoreFileTest, AMigrationThatFailsLeavesTheOldVersion) {
    add(*open(), "mine");
    constexpr std::array broken{firstVersion[0], "ALTER TABLE thing ADD COLUMN number; SELECT nothing FROM nowhere"};
    const StoreSchema brokenSchema{"things", 4711, broken, fill};
    auto file = open(brokenSchema);
    EXPECT_NE(failureOf(*file), "");
    EXPECT_EQ(count(*open(newSchema)), 501);
}

TEST_F(StoreFileTest, RefusesANewerVersionAndLeavesItAsItIs) {
    count(*open(newSchema));
    const auto before = getFile(path);
    auto file = open();
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(failureOf(*file), "The things were written by a newer version of Brindlefox Apple Bridge, and this "
                                    "one can't read them.");
    file.reset();
    EXPECT_EQ(getFile(path), before);
    EXPECT_EQ(count(*open(newSchema)), 500);
}

TEST_F(StoreFileTest, RefusesADatabaseOfAnotherProgramAndLeavesItAsItIs) {
    count(*open(otherSchema));
    const auto before = getFile(path);
    EXPECT_EQ(failureOf(*open()), "The file of the things belongs to another program.");
    EXPECT_EQ(getFile(path), before);
}

TEST_F(StoreFileTest, KeepsADamagedFileAsideAndSaysSoUntilItIsOpenedAnew) {
    count(*open());
    putFile(path, std::string(20'000, 'g'));
    auto file = open();
    const auto expected = "The file of the things is damaged. It is kept as " + path +
                          ".damaged-2026-08-14. Brindlefox Apple Bridge begins with an empty one when it is started "
                          "anew.";
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(failureOf(*file), expected);
    EXPECT_NE(failureOf([&] { add(*file, "lost"); }), "");
    EXPECT_EQ(getFile(path + ".damaged-2026-08-14"), std::string(20'000, 'g'));
    EXPECT_FALSE(std::filesystem::exists(path));

    EXPECT_EQ(count(*open()), 500);
}

TEST_F(StoreFileTest, NeverReplacesWhatWasKeptAside) {
    for (const auto* content : {"one", "two", "three"}) {
        putFile(path, content);
        EXPECT_THAT(failureOf(*open()), HasSubstr("is damaged"));
    }
    EXPECT_EQ(getFile(path + ".damaged-2026-08-14"), "one");
    EXPECT_EQ(getFile(path + ".damaged-2026-08-14-2"), "two");
    EXPECT_EQ(getFile(path + ".damaged-2026-08-14-3"), "three");
}

TEST_F(StoreFileTest, AnEmptyFileIsDamaged) {
    putFile(path, "");
    EXPECT_THAT(failureOf(*open()), HasSubstr("is damaged. It is kept as"));
}

TEST_F(StoreFileTest, AFileThatLostItsEndIsDamaged) {
    count(*open());
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    EXPECT_THAT(failureOf(*open()), HasSubstr("is damaged. It is kept as"));
}

TEST_F(StoreFileTest, AFileThatLosesItsEndWhileItIsOpenIsDamaged) {
    auto file = open();
    count(*file);
    std::filesystem::resize_file(path, 0);
    EXPECT_THAT(failureOf(*file), HasSubstr("is damaged. It is kept as"));
}

TEST_F(StoreFileTest, DamageThatShowsLaterIsKeptAsideWithItsJournal) {
    count(*open());
    auto file = open();
    add(*file, "in the journal");
    auto bytes = getFile(path);
    std::fill(bytes.begin() + 4096, bytes.end(), 'x');
    {
        std::fstream writer(path, std::ios::in | std::ios::out | std::ios::binary);
        writer << bytes;
    }
    // A change by another program, so that what was read before counts no more.
    Database(path, "things", {}).script("PRAGMA user_version = 1");
    EXPECT_THAT(failureOf(*file), HasSubstr("is damaged. It is kept as"));
    EXPECT_THAT(failureOf(*file), HasSubstr("is damaged. It is kept as"));
    EXPECT_EQ(getFile(path + ".damaged-2026-08-14"), bytes);
    EXPECT_THAT(getFile(path + ".damaged-2026-08-14-wal"), HasSubstr("in the journal"));
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_EQ(count(*open()), 500);
}

TEST_F(StoreFileTest, AJournalWithoutItsDatabaseIsKept) {
    auto file = open();
    add(*file, "in the journal");
    std::filesystem::copy_file(path + "-wal", path + ".copy");
    file.reset();
    std::filesystem::remove(path);
    std::filesystem::rename(path + ".copy", path + "-wal");

    EXPECT_THAT(failureOf(*open()), HasSubstr("is damaged. It is kept as"));
    EXPECT_THAT(getFile(path + ".damaged-2026-08-14-wal"), HasSubstr("in the journal"));
    EXPECT_EQ(count(*open()), 500);
}

TEST_F(StoreFileTest, AnyFlippedByteIsFoundOrDoesNoHarm) {
    count(*open());
    const auto whole = getFile(path);
    // Every byte of the header, then one in each stretch.
    for (size_t place = 0; place < whole.size(); place += place < 100 ? 1 : 61) {
        auto bytes = whole;
        bytes[place] = static_cast<char>(bytes[place] ^ 0xff);
        putFile(path, bytes);
        auto file = open();
        int64_t found = 0;
        const auto failure = failureOf([&] { found = count(*file); });
        EXPECT_EQ(found, failure.empty() ? 500 : 0) << "byte " << place;
        file.reset();
        for (const auto& name : names())
            std::filesystem::remove(folder / name);
    }
}

TEST_F(StoreFileTest, AFolderInItsPlaceIsLeftAlone) {
    std::filesystem::create_directory(path);
    EXPECT_EQ(failureOf(*open()), "The things can't be opened: " + path + " is no file.");
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST_F(StoreFileTest, APipeInItsPlaceIsLeftAlone) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(failureOf(*open()), "The things can't be opened: " + path + " is no file.");
}

TEST_F(StoreFileTest, AFileThatMayNotBeReadIsLeftAlone) {
    count(*open());
    auto file = open();
    std::string failure;
    if (!withoutSystemCall(SYS_openat, EACCES, [&] { failure = failureOf(*file); }))
        GTEST_SKIP() << "no filter can be set here";
    EXPECT_EQ(failure, "The file of the things can't be opened: permission denied.");
    EXPECT_EQ(count(*file), 500);
    EXPECT_THAT(names(), testing::Contains("things.db"));
}

TEST_F(StoreFileTest, IsReadWhileAnotherProgramWrites) {
    auto file = open();
    count(*file);
    Database other(path, "things", {});
    std::optional<Transaction> held;
    held.emplace(other, Transaction::Kind::write);
    other.run("INSERT INTO thing(name) VALUES('theirs')");
    EXPECT_EQ(count(*file), 500);
    EXPECT_EQ(failureOf([&] { add(*file, "mine"); }),
              "The things are in use by another program. Try again in a moment.");
    held->commit();
    EXPECT_EQ(count(*file), 501);
    add(*file, "mine");
    EXPECT_EQ(count(*file), 502);
}

TEST_F(StoreFileTest, WaitsForNobodyWhenItIsHeldAtTheFirstCall) {
    count(*open());
    {
        Database other(path, "things", {});
        other.script("PRAGMA locking_mode = EXCLUSIVE");
        Transaction transaction(other, Transaction::Kind::write);
        other.run("INSERT INTO thing(name) VALUES('theirs')");
        auto file = open();
        EXPECT_EQ(failureOf(*file), "The things are in use by another program. Try again in a moment.");
    }
    EXPECT_EQ(count(*open()), 500);
}

TEST_F(StoreFileTest, AFileThatIsGoneFailsUntilItIsBack) {
    auto file = open();
    add(*file, "mine");
    const auto elsewhere = folder.file("elsewhere");
    std::filesystem::create_directory(elsewhere);
    for (const auto* name : {"things.db", "things.db-wal", "things.db-shm"})
        std::filesystem::rename(folder / name, std::filesystem::path(elsewhere) / name);
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(failureOf(*file), "The file of the things is gone from " + path + ".");
    EXPECT_NE(failureOf([&] { add(*file, "lost"); }), "");
    for (const auto* name : {"things.db", "things.db-wal", "things.db-shm"})
        std::filesystem::rename(std::filesystem::path(elsewhere) / name, folder / name);
    EXPECT_EQ(count(*file), 501);
    add(*file, "mine too");
    EXPECT_EQ(count(*file), 502);
}

TEST_F(StoreFileTest, AFileThatWasExchangedIsOpenedAfresh) {
    auto file = open();
    add(*file, "old");
    const auto moved = folder.file("moved.db");
    for (const auto* suffix : {"", "-wal", "-shm"})
        std::filesystem::rename(path + suffix, moved + suffix);
    auto other = open();
    add(*other, "new");
    add(*other, "newer");
    EXPECT_EQ(count(*file), 502);
    add(*file, "newest");
    EXPECT_EQ(count(*other), 503);
    file.reset();
    other.reset();
    EXPECT_EQ(count(*open()), 503);
}

} // namespace
} // namespace bridge
