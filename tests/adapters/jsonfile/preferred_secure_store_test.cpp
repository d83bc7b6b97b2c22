#include "adapters/jsonfile/preferred_secure_store.h"

#include "base/event_loop.h"
#include "tests/base/gate.h"
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
        keyringNow = nullptr;
        auto failingFile = std::make_unique<FailingSecureStore>(fileBehind);
        fileNow = failingFile.get();
        store =
            std::make_unique<PreferredSecureStore>([this, keyring] { return open(keyring); }, std::move(failingFile));
    }
    Task<std::unique_ptr<SecureStore>> open(Keyring keyring) {
        ++timesOpened;
        if (isSlow) co_await opened.opened();
        if (keyring == Keyring::locked) co_return nullptr;
        auto failing = std::make_unique<FailingSecureStore>(keyringBehind);
        keyringNow = failing.get();
        co_return failing;
    }
    void keyringFails() {
        if (!keyringNow) read(); // opens it
        keyringNow->fail({Call::read, Call::replace, Call::remove}, 2);
    }

    std::optional<std::string> read() { return loop.runUntilDone(store->read(item)); }
    void replace(const std::string& secret) { loop.runUntilDone(store->replace(item, secret)); }
    void remove() { loop.runUntilDone(store->remove(item)); }

    Gate opened;
    bool isSlow = false;
    int timesOpened = 0;
    EventLoop loop;
    const SecureItem item{"service", "account"};
    const std::pair<std::string, std::string> key{"service", "account"};
    MemorySecureStore keyringBehind;
    MemorySecureStore fileBehind;
    FailingSecureStore* keyringNow = nullptr;
    FailingSecureStore* fileNow = nullptr;
    std::unique_ptr<PreferredSecureStore> store;
};

TEST_F(PreferredSecureStoreTest, OpensTheKeyringOnceWithTheFirstCallThatNeedsIt) {
    isSlow = true;
    start(Keyring::unlocked);
    EXPECT_EQ(timesOpened, 0);
    auto replacing = store->replace(item, "secret");
    replacing.start();
    auto reading = store->read(item);
    reading.start();
    EXPECT_FALSE(replacing.done());
    EXPECT_FALSE(reading.done());
    opened.open();
    ASSERT_TRUE(replacing.done());
    replacing.take();
    EXPECT_TRUE(reading.done());
    EXPECT_EQ(read(), "secret");
    EXPECT_EQ(timesOpened, 1);
    EXPECT_EQ(store->description(), keyringBehind.description());
}

TEST_F(PreferredSecureStoreTest, OpensTheKeyringAnewAfterACallThatWasDropped) {
    isSlow = true;
    start(Keyring::unlocked);
    {
        auto dropped = store->read(item);
        dropped.start();
    }
    EXPECT_EQ(opened.withdrawn(), 1);
    isSlow = false;
    replace("secret");
    EXPECT_EQ(read(), "secret");
    EXPECT_EQ(timesOpened, 2);
}

TEST_F(PreferredSecureStoreTest, LeavesTheKeyringAloneWhereTheFileHasTheSecret) {
    start(Keyring::locked);
    replace("secret");
    start(Keyring::unlocked);
    timesOpened = 0;
    EXPECT_EQ(read(), "secret");
    EXPECT_EQ(timesOpened, 0);
}

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
