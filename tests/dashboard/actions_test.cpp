#include "app/dashboard/actions.h"
#include "tests/base/gate.h"

#include <QCoreApplication>
#include <gmock/gmock.h>

#include <stdexcept>

namespace bridge {
namespace {

Task<> pass(Gate* gate) {
    co_await gate->opened();
}
Task<> fail() {
    throw std::runtime_error("no");
    co_return;
}

TEST(UserActions, RunSeveralAtOnceAndOneOfAName) {
    Gate one, two;
    Actions actions;
    int begun = 0;
    const auto through = [&](Gate& gate) {
        return [&] {
            ++begun;
            return pass(&gate);
        };
    };
    actions.start("one", through(one));
    actions.start("two", through(two));
    actions.start("one", through(two));
    EXPECT_EQ(begun, 2);
    EXPECT_TRUE(actions.isUnderWay("one"));
    one.open();
    EXPECT_FALSE(actions.isUnderWay("one"));
    EXPECT_TRUE(actions.isUnderWay("two"));
    QCoreApplication::processEvents();
    actions.start("one", through(one));
    EXPECT_EQ(begun, 3);
}

TEST(UserActions, RunSeveralOfANameWhereEachCounts) {
    Gate first, second;
    Actions actions;
    actions.startAlways("one", [&] { return pass(&first); });
    actions.startAlways("one", [&] { return pass(&second); });
    EXPECT_TRUE(first.isAwaited());
    EXPECT_TRUE(second.isAwaited());
    first.open();
    EXPECT_TRUE(actions.isUnderWay("one"));
    second.open();
    EXPECT_FALSE(actions.isUnderWay("one"));
    EXPECT_TRUE(actions.repeatLast());
    EXPECT_TRUE(second.isAwaited());
}

TEST(UserActions, TellWhenTheyEndAlsoWhenTheyFail) {
    Actions actions;
    int ended = 0;
    actions.startUnrepeated("fails", fail, [&] { ++ended; });
    actions.startUnrepeated(
        "done", [] { return done(); }, [&] { ++ended; });
    EXPECT_EQ(ended, 2);
    EXPECT_FALSE(actions.isUnderWay("fails"));
}

TEST(UserActions, CanBeRepeatedWhereTheyAreMeantToBe) {
    Actions actions;
    EXPECT_FALSE(actions.repeatLast());
    int wanted = 0, unrepeated = 0;
    const auto count = [](int& number) {
        return [&number] {
            ++number;
            return done();
        };
    };
    actions.start("wanted", count(wanted));
    actions.startUnrepeated("unrepeated", count(unrepeated));
    EXPECT_TRUE(actions.repeatLast());
    EXPECT_TRUE(actions.repeatLast());
    EXPECT_EQ(wanted, 3);
    EXPECT_EQ(unrepeated, 1);
}

TEST(UserActions, EndWithTheDashboard) {
    Gate gate;
    {
        Actions actions;
        actions.start("waits", [&] { return pass(&gate); });
        EXPECT_TRUE(gate.isAwaited());
    }
    EXPECT_FALSE(gate.isAwaited());
}

} // namespace
} // namespace bridge
