#include "adapters/jsonfile/file_secure_store.h"

#include "base/event_loop.h"
#include "tests/support/public_data.h"
#include "tests/support/temporary_folder.h"

#include <sys/stat.h>
#include <unistd.h>

namespace bridge {
namespace {

class FileSecureStoreTest : public testing::Test {
protected:
    std::optional<std::string> read() { return loop.runUntilDone(store.read(item)); }
    void replace(const std::string& secret) { loop.runUntilDone(store.replace(item, secret)); }
    void remove() { loop.runUntilDone(store.remove(item)); }
    void write(std::string_view content) { std::ofstream(path, std::ios::binary) << content; }
    mode_t permissions() const {
        struct stat status;
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    EventLoop loop;
    TemporaryFolder folder;
    const std::string path = folder.file("secrets.json");
    const SecureItem item{"service", "account"};
    FileSecureStore store{path};
};

TEST_F(FileSecureStoreTest, IsForTheUserAlone) {
    const auto former = umask(0);
    replace("secret");
    umask(former);
    EXPECT_EQ(permissions(), 0600U);
}

TEST_F(FileSecureStoreTest, ClosesAFileThatOthersMayRead) {
    replace("secret");
    chmod(path.c_str(), 0644);
    EXPECT_EQ(read(), "secret");
    EXPECT_EQ(permissions(), 0600U);
}

TEST_F(FileSecureStoreTest, AnEmptySecretIsAnItemToo) {
    replace("");
    EXPECT_EQ(read(), "");
}

TEST_F(FileSecureStoreTest, ReadsAndWritesThroughNoLink) {
    const auto elsewhere = folder.file("elsewhere.json");
    replace("secret");
    std::filesystem::rename(path, elsewhere);
    const auto before = readFile(elsewhere);
    std::filesystem::create_symlink(elsewhere, path);
    EXPECT_THROW(read(), SecureStoreError);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_THROW(remove(), SecureStoreError);
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(readFile(elsewhere), before);
}

TEST_F(FileSecureStoreTest, RefusesAFileOfAnotherUser) {
    replace("secret");
    if (chown(path.c_str(), geteuid() + 1, static_cast<gid_t>(-1)) != 0)
        GTEST_SKIP() << "only root can give a file away";
    const auto before = readFile(path);
    EXPECT_THROW(read(), SecureStoreError);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_THROW(remove(), SecureStoreError);
    EXPECT_EQ(readFile(path), before);
}

TEST_F(FileSecureStoreTest, ADamagedFileIsAnErrorAndNotAnAbsentItem) {
    for (const auto* damaged :
         {"", "{", "[]", R"({"service":{"account":"no base64!"}})", R"({"service":{"account":5}})"}) {
        write(damaged);
        EXPECT_THROW(read(), SecureStoreError) << damaged;
        EXPECT_EQ(readFile(path), damaged);
    }
}

TEST_F(FileSecureStoreTest, AChangeSetsADamagedFileAside) {
    write("first");
    replace("secret");
    EXPECT_EQ(read(), "secret");
    write("second");
    remove();
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(readFile(path + ".damaged-1"), "first");
    EXPECT_EQ(readFile(path + ".damaged-2"), "second");
}

TEST_F(FileSecureStoreTest, AFailedWriteKeepsTheOldSecret) {
    const auto place = folder.file("place");
    FileSecureStore other(place + "/secrets.json");
    loop.runUntilDone(other.replace(item, "old"));
    std::filesystem::rename(place, folder.file("away"));
    std::ofstream(place).put(' ');
    EXPECT_THROW(loop.runUntilDone(other.replace(item, "new")), SecureStoreError);
    EXPECT_THROW(loop.runUntilDone(other.read(item)), SecureStoreError);
    std::filesystem::remove(place);
    std::filesystem::rename(folder.file("away"), place);
    EXPECT_EQ(loop.runUntilDone(other.read(item)), "old");
}

} // namespace
} // namespace bridge
