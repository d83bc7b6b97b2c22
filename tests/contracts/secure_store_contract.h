#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "base/event_loop.h"
#include "platform/secure_store.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge {

// What the contract needs of one adapter.
struct SecureStoreSite {
    virtual ~SecureStoreSite() = default;

    // Why the adapter can't run on this machine; its tests are then skipped.
    virtual std::string hindrance() const { return {}; }

    // A store as a new run of the program would open it, over the same place each time.
    virtual std::unique_ptr<SecureStore> start(EventLoop& loop) = 0;
};

struct SecureStoreKind {
    std::string name;
    std::function<std::unique_ptr<SecureStoreSite>()> make;
};

inline void PrintTo(const SecureStoreKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<SecureStoreKind>& info) {
    return info.param.name;
}

class SecureStoreContract : public testing::TestWithParam<SecureStoreKind> {
protected:
    void SetUp() override {
        site = GetParam().make();
        if (const auto hindrance = site->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
        store = site->start(loop);
        ASSERT_TRUE(store) << "the store does not open";
    }
    void TearDown() override { store.reset(); }

    std::optional<std::string> read(const SecureItem& which) { return loop.runUntilDone(store->read(which)); }
    void replace(const SecureItem& which, const std::string& secret) {
        loop.runUntilDone(store->replace(which, secret));
    }
    void remove(const SecureItem& which) { loop.runUntilDone(store->remove(which)); }
    void restart() {
        store.reset();
        store = site->start(loop);
        ASSERT_TRUE(store);
    }

    const SecureItem item{"com.example.service", "account"};
    EventLoop loop;
    std::unique_ptr<SecureStoreSite> site;
    std::unique_ptr<SecureStore> store;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SecureStoreContract);

TEST_P(SecureStoreContract, HasNothingAtFirst) {
    EXPECT_EQ(read(item), std::nullopt);
}

TEST_P(SecureStoreContract, FindsWhatWasStoredAlsoAfterARestart) {
    replace(item, "one");
    EXPECT_EQ(read(item), "one");
    restart();
    EXPECT_EQ(read(item), "one");
}

TEST_P(SecureStoreContract, ReplacesTheItem) {
    replace(item, "one");
    replace(item, "two");
    EXPECT_EQ(read(item), "two");
    restart();
    EXPECT_EQ(read(item), "two");
}

TEST_P(SecureStoreContract, KeepsItemsApart) {
    const SecureItem otherService{"com.example.other", item.account};
    const SecureItem otherAccount{item.service, "other"};
    replace(item, "one");
    EXPECT_EQ(read(otherService), std::nullopt);
    EXPECT_EQ(read(otherAccount), std::nullopt);
    replace(otherService, "two");
    replace(otherAccount, "three");
    remove(item);
    EXPECT_EQ(read(item), std::nullopt);
    EXPECT_EQ(read(otherService), "two");
    EXPECT_EQ(read(otherAccount), "three");
}

TEST_P(SecureStoreContract, ForgetsWhatWasRemovedAlsoAfterARestart) {
    replace(item, "one");
    remove(item);
    EXPECT_EQ(read(item), std::nullopt);
    restart();
    EXPECT_EQ(read(item), std::nullopt);
}

TEST_P(SecureStoreContract, RemovesWhatIsNotThere) {
    remove(item);
    remove(item);
    EXPECT_EQ(read(item), std::nullopt);
}

TEST_P(SecureStoreContract, StoresAgainAfterARemoval) {
    replace(item, "one");
    remove(item);
    replace(item, "two");
    restart();
    EXPECT_EQ(read(item), "two");
}

TEST_P(SecureStoreContract, KeepsOddSecretsToTheByte) {
    const std::string secrets[] = {"🦊 क्षि עברית", std::string("a\0b", 3),  "line\r\nbreak", " spaced ",
                                   "\xff\xfe not UTF-8",           std::string(10'000, 'x')};
    for (const auto& secret : secrets) {
        replace(item, secret);
        EXPECT_EQ(read(item), secret);
    }
}

TEST_P(SecureStoreContract, TakesOddNames) {
    const SecureItem odd{"com.example/… \"quoted\"", "🦊 'account'"};
    replace(odd, "one");
    restart();
    EXPECT_EQ(read(odd), "one");
}

TEST_P(SecureStoreContract, DroppedCallLeavesTheOldOrTheNewItem) {
    replace(item, "old");
    {
        auto dropped = store->replace(item, "new");
        dropped.start();
    }
    const auto found = read(item);
    EXPECT_TRUE(found == "old" || found == "new") << found.value_or("nothing");
    replace(item, "newest");
    EXPECT_EQ(read(item), "newest");
}

TEST_P(SecureStoreContract, SaysWhatItIs) {
    EXPECT_FALSE(store->description().empty());
}

} // namespace bridge
