#include "adapters/jsonfile/preferred_secure_store.h"

#include "base/event_loop.h"
#include "tests/fakes/failing_secure_store.h"
#include "tests/fakes/memory_secure_store.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Items = MemorySecureStore::Items;
using Call = FailingSecureStore::Call;

// One machine over several runs of the program, its keyring now unlocked, now locked.
class PreferredSecureStoreTest : public testing::Test {
protected:
    enum class Keyring { unlocked, locked };

    void start(Keyring keyring) {
        auto failing = std::make_unique<FailingSecureStore>(keyringBehind);
        keyringNow = failing.get();
        auto failingFile = std::make_unique<FailingSecureStore>(fileBehind);
        fileNow = failingFile.get();
        if (keyring == Keyring::locked) {
            failing.reset();
            keyringNow = nullptr;
        }
        store = std::make_unique<PreferredSecureStore>(std::move(failing), std::move(failingFile));
    }
    void keyringFails() { keyringNow->fail({Call::read, Call::replace, Call::remove}, 2); }

    std::optional<std::string> read() { return loop.runUntilDone(store->read(item)); }
    void replace(const std::string& secret) { loop.runUntilDone(store->replace(item, secret)); }
    void remove() { loop.runUntilDone(store->remove(item)); }

    EventLoop loop;
    const SecureItem item{"service", "account"};
    const std::pair<std::string, std::string> key{"service", "account"};
    MemorySecureStore keyringBehind;
    MemorySecureStore fileBehind;
    FailingSecureStore* keyringNow = nullptr;
    FailingSecureStore* fileNow = nullptr;
    std::unique_ptr<PreferredSecureStore> store;
};

TEST_F(PreferredSecureStoreTest, KeepsTheSecretInTheKeyringAlone) {
    start(Keyring::unlocked);
    replace("secret");
    EXPECT_EQ(keyringBehind.items(), (Items{{key, "secret"}}));
    EXPECT_TRUE(fileBehind.items().empty());
}

TEST_F(PreferredSecureStoreTest, UsesTheFileWhileTheKeyringIsLocked) {
    start(Keyring::locked);
    replace("secret");
    EXPECT_TRUE(keyringBehind.items().empty());
    EXPECT_EQ(read(), "secret");
}

TEST_F(PreferredSecureStoreTest, WhatWasStoredWhileLockedIsNewerThanTheKeyring) {
    start(Keyring::unlocked);
    replace("old");
    start(Keyring::locked);
    replace("new");
    start(Keyring::unlocked);
    EXPECT_EQ(read(), "new");
}

TEST_F(PreferredSecureStoreTest, StoringInTheKeyringClearsTheFile) {
    start(Keyring::locked);
    replace("old");
    start(Keyring::unlocked);
    replace("new");
    EXPECT_TRUE(fileBehind.items().empty());
    EXPECT_EQ(read(), "new");
}

TEST_F(PreferredSecureStoreTest, ASecretRemovedWhileLockedDoesNotComeBack) {
    start(Keyring::unlocked);
    replace("old");
    start(Keyring::locked);
    remove();
    EXPECT_EQ(read(), std::nullopt);
    start(Keyring::unlocked);
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(PreferredSecureStoreTest, ASecretStoredAfterSuchARemovalIsFound) {
    start(Keyring::unlocked);
    replace("old");
    start(Keyring::locked);
    remove();
    start(Keyring::unlocked);
    replace("new");
    EXPECT_EQ(read(), "new");
    remove();
    EXPECT_TRUE(keyringBehind.items().empty());
    EXPECT_TRUE(fileBehind.items().empty());
}

TEST_F(PreferredSecureStoreTest, AKeyringThatFailsInTheMiddleLeavesTheWorkToTheFile) {
    start(Keyring::unlocked);
    replace("old");
    keyringFails();
    replace("new");
    EXPECT_EQ(read(), "new");
    remove();
    EXPECT_EQ(read(), std::nullopt);
    start(Keyring::unlocked);
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(PreferredSecureStoreTest, AKeyringThatCanNotBeReadIsAnError) {
    start(Keyring::unlocked);
    replace("secret");
    keyringFails();
    EXPECT_THROW(read(), SecureStoreError);
}

TEST_F(PreferredSecureStoreTest, AFileThatCanNotBeReadIsAnErrorForItMayBeNewer) {
    start(Keyring::unlocked);
    replace("secret");
    fileNow->fail({Call::read}, 5);
    EXPECT_THROW(read(), SecureStoreError);
}

TEST_F(PreferredSecureStoreTest, WhenBothFailTheCallerHears) {
    start(Keyring::unlocked);
    replace("old");
    keyringFails();
    fileNow->fail({Call::replace, Call::remove}, 5);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_THROW(remove(), SecureStoreError);
    keyringNow->recover();
    EXPECT_EQ(read(), "old");
}

TEST_F(PreferredSecureStoreTest, AFileThatKeepsTheOldSecretIsAnError) {
    start(Keyring::locked);
    replace("old");
    start(Keyring::unlocked);
    fileNow->fail({Call::replace, Call::remove}, 5);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_EQ(read(), "old");
    EXPECT_THROW(remove(), SecureStoreError);
    EXPECT_EQ(read(), "old");
}

} // namespace
} // namespace bridge
