#include "adapters/secretservice/secret_service_store.h"

#include "tests/adapters/secretservice/private_keyring.h"
#include "tests/contracts/secure_store_contract.h"

namespace bridge {
namespace {

using State = PrivateKeyring::State;

struct KeyringSite : SecureStoreSite {
    PrivateKeyring keyring;

    std::string hindrance() const override { return PrivateKeyring::hindrance(); }
    std::unique_ptr<SecureStore> start(EventLoop& loop) override {
        if (!keyring.isRunning()) keyring.start(State::unlocked);
        return loop.runUntilDone(SecretServiceStore::open(loop));
    }
};

const SecureStoreKind secretService{"SecretService", [] { return std::make_unique<KeyringSite>(); }};
INSTANTIATE_TEST_SUITE_P(Adapters, SecureStoreContract, testing::Values(secretService), nameOf);

class SecretServiceStoreTest : public testing::Test {
protected:
    void SetUp() override {
        if (const auto hindrance = PrivateKeyring::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }
    static constexpr std::chrono::minutes ample{2};

    void open(std::chrono::milliseconds deadline = ample) {
        store = loop.runUntilDone(SecretServiceStore::open(loop, deadline));
    }
    void openUnlocked(std::chrono::milliseconds deadline = ample) {
        keyring.start(State::unlocked);
        open(deadline);
        ASSERT_TRUE(store);
        replace("secret");
    }
    std::optional<std::string> read() { return loop.runUntilDone(store->read(item)); }
    void replace(const std::string& secret) { loop.runUntilDone(store->replace(item, secret)); }
    void remove() { loop.runUntilDone(store->remove(item)); }

    const SecureItem item{"com.example.service", "account"};
    EventLoop loop;
    PrivateKeyring keyring;
    std::unique_ptr<SecretServiceStore> store;
};

TEST_F(SecretServiceStoreTest, DoesNotOpenWithoutAService) {
    open();
    EXPECT_FALSE(store);
}

TEST_F(SecretServiceStoreTest, DoesNotOpenALockedKeyring) {
    openUnlocked();
    store.reset();
    keyring.end();
    keyring.start(State::locked);
    open();
    EXPECT_FALSE(store);
}

TEST_F(SecretServiceStoreTest, DoesNotOpenAKeyringWithoutADefaultCollection) {
    keyring.start(State::locked);
    open();
    EXPECT_FALSE(store);
}

TEST_F(SecretServiceStoreTest, DoesNotOpenAKeyringThatHangs) {
    keyring.start(State::unlocked);
    keyring.pause();
    open(std::chrono::milliseconds(100));
    EXPECT_FALSE(store);
}

TEST_F(SecretServiceStoreTest, FindsTheSecretAfterTheKeyringWasRestarted) {
    openUnlocked();
    keyring.end();
    keyring.start(State::unlocked);
    EXPECT_EQ(read(), "secret");
}

TEST_F(SecretServiceStoreTest, AKeyringThatIsGoneIsAnErrorAndNotAnAbsentItem) {
    openUnlocked();
    keyring.end();
    EXPECT_THROW(read(), SecureStoreError);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_THROW(remove(), SecureStoreError);
}

TEST_F(SecretServiceStoreTest, AKeyringKilledDuringACallIsAnError) {
    openUnlocked(std::chrono::hours(1));
    keyring.pause();
    auto reading = store->read(item);
    reading.start();
    keyring.end();
    while (!reading.done())
        loop.waitOnce();
    EXPECT_THROW(reading.take(), SecureStoreError);
}

TEST_F(SecretServiceStoreTest, AKeyringThatWasLockedIsAnErrorAndAsksNobody) {
    openUnlocked();
    keyring.lock();
    EXPECT_THROW(read(), SecureStoreError);
    EXPECT_THROW(replace("new"), SecureStoreError);
    EXPECT_THROW(remove(), SecureStoreError);
}

TEST_F(SecretServiceStoreTest, AHungKeyringCostsTheCallThatItHangs) {
    keyring.start(State::unlocked);
    open();
    ASSERT_TRUE(store);
    replace("secret");
    const auto impatient = loop.runUntilDone(SecretServiceStore::open(loop, std::chrono::seconds(5)));
    ASSERT_TRUE(impatient);
    keyring.pause();
    EXPECT_THROW(loop.runUntilDone(impatient->read(item)), SecureStoreError);
    keyring.goOn();
    EXPECT_EQ(read(), "secret");
}

TEST_F(SecretServiceStoreTest, ADroppedCallLetsTheNextOneThrough) {
    openUnlocked(std::chrono::hours(1));
    keyring.pause();
    {
        auto dropped = store->read(item);
        dropped.start();
    }
    keyring.goOn();
    EXPECT_EQ(read(), "secret");
}

TEST_F(SecretServiceStoreTest, DestroyingTheStoreWaitsForNobody) {
    openUnlocked(std::chrono::hours(1));
    keyring.pause();
    {
        auto dropped = store->read(item);
        dropped.start();
    }
    store.reset();
    keyring.goOn();
}

// In a process of its own, for GLib keeps to the first bus it meets.
class SecretServiceStoreDeathTest : public testing::Test {
protected:
    SecretServiceStoreDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] static void exitWithWhetherItOpens() {
        EventLoop loop;
        const auto store = loop.runUntilDone(SecretServiceStore::open(loop));
        _exit(store ? 1 : 0);
    }
    [[noreturn]] static void openOverABusThatIsGone() {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
        exitWithWhetherItOpens();
    }
    [[noreturn]] static void openOverABusThatMakesNoSense() {
        setenv("DBUS_SESSION_BUS_ADDRESS", "🦊", 1);
        exitWithWhetherItOpens();
    }
    [[noreturn]] static void openWithoutASession() {
        for (const auto* name : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "DISPLAY"})
            unsetenv(name);
        exitWithWhetherItOpens();
    }
};

TEST_F(SecretServiceStoreDeathTest, DoesNotOpenWithoutABus) {
    EXPECT_EXIT(openOverABusThatIsGone(), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(openOverABusThatMakesNoSense(), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(openWithoutASession(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace bridge
