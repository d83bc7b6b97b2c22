#include "base/published.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bridge {
namespace {

using Log = std::vector<std::string>;

struct PublishedTest : testing::Test {
    auto note(std::string name) {
        return [this, name](int now) { log.push_back(name + std::to_string(now)); };
    }
    Published<int> value{0};
    Log log;
};

TEST_F(PublishedTest, TellsEachChangeInTheOrderOfSubscription) {
    const auto a = value.observe(note("a"));
    const auto b = value.observe(note("b"));
    EXPECT_TRUE(log.empty());
    value.set(1);
    EXPECT_EQ(value.get(), 1);
    value.set(2);
    EXPECT_EQ(log, (Log{"a1", "b1", "a2", "b2"}));
}

TEST_F(PublishedTest, TellsNobodyOfAnEqualValue) {
    const auto a = value.observe(note("a"));
    value.set(0);
    value.set(1);
    value.set(1);
    EXPECT_EQ(log, (Log{"a1"}));
}

TEST_F(PublishedTest, ForgetsWhoeverUnsubscribed) {
    auto a = value.observe(note("a"));
    const auto b = value.observe(note("b"));
    a.reset();
    value.set(1);
    EXPECT_EQ(log, (Log{"b1"}));
}

TEST_F(PublishedTest, ObserverMayUnsubscribeItselfInItsTurn) {
    Subscription a;
    a = value.observe([&](int now) {
        a.reset();
        log.push_back("a" + std::to_string(now));
    });
    const auto b = value.observe(note("b"));
    value.set(1);
    value.set(2);
    EXPECT_EQ(log, (Log{"a1", "b1", "b2"}));
}

TEST_F(PublishedTest, ObserverMayUnsubscribeALaterOne) {
    Subscription b;
    const auto a = value.observe([&](int now) {
        b.reset();
        log.push_back("a" + std::to_string(now));
    });
    b = value.observe(note("b"));
    const auto c = value.observe(note("c"));
    value.set(1);
    EXPECT_EQ(log, (Log{"a1", "c1"}));
}

TEST_F(PublishedTest, WhoeverSubscribesInACallbackHearsTheNextChange) {
    Subscription late;
    const auto a = value.observe([&](int) {
        if (!late) late = value.observe(note("late"));
    });
    value.set(1);
    EXPECT_TRUE(log.empty());
    value.set(2);
    EXPECT_EQ(log, (Log{"late2"}));
}

TEST_F(PublishedTest, ChangeMadeInACallbackComesToAllAfterTheFirst) {
    const auto a = value.observe(note("a"));
    const auto b = value.observe([&](int now) {
        log.push_back("b" + std::to_string(now));
        if (now == 1) {
            value.set(2);
            EXPECT_EQ(value.get(), 2);
            value.set(3);
        }
    });
    const auto c = value.observe(note("c"));
    value.set(1);
    EXPECT_EQ(log, (Log{"a1", "b1", "c1", "a2", "b2", "c2", "a3", "b3", "c3"}));
}

TEST_F(PublishedTest, SettingItBackInACallbackIsToldAsTwoChanges) {
    const auto a = value.observe([&](int now) {
        if (now == 1) value.set(0);
    });
    const auto b = value.observe(note("b"));
    value.set(1);
    EXPECT_EQ(value.get(), 0);
    EXPECT_EQ(log, (Log{"b1", "b0"}));
}

// It read 3 when it subscribed; hearing 2 or 3 now would be news from the past.
TEST_F(PublishedTest, WhoeverSubscribesBetweenChangesHearsOnlyLaterOnes) {
    Subscription late;
    const auto a = value.observe([&](int now) {
        if (now != 1) return;
        value.set(2);
        value.set(3);
        late = value.observe(note("late"));
        value.set(4);
    });
    value.set(1);
    EXPECT_EQ(log, (Log{"late4"}));
}

TEST_F(PublishedTest, ObserverThatThrowsDoesNotSilenceLaterChanges) {
    const auto a = value.observe([](int now) {
        if (now == 1) throw std::runtime_error("refused");
    });
    const auto b = value.observe(note("b"));
    EXPECT_THROW(value.set(1), std::runtime_error);
    value.set(2);
    EXPECT_EQ(log, (Log{"b2"}));
}

TEST(Published, SubscriptionMayOutliveTheValue) {
    std::optional<Published<std::string>> value;
    value.emplace("a");
    const auto held = std::make_shared<int>(1);
    auto subscription = value->observe([held](const std::string&) {});
    value.reset();
    EXPECT_EQ(held.use_count(), 2);
    subscription.reset();
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace bridge
