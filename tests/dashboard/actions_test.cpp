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

// Whose failure is shown is for the test to say.
struct UserActions : testing::Test {
    uint64_t begun = 0;
    std::optional<uint64_t> failed;
    Gate one, two; // before what waits for them
    Actions actions{{[this] { return begun; }, [this] { return failed; }}};

    // Work that counts: itself as begun, and in `times`.
    Actions::Work counted(int& times) {
        return [this, &times] {
            ++begun;
            ++times;
            return done();
        };
    }
    Actions::Work counted(int& times, Gate& gate) {
        return [this, &times, &gate] {
            ++begun;
            ++times;
            return pass(&gate);
        };
    }
};

TEST_F(UserActions, RunSeveralAtOnceAndOneOfAName) {
    int worked = 0;
    const auto through = [&](Gate& gate) {
        return [&] {
            ++worked;
            return pass(&gate);
        };
    };
    actions.start("one", through(one));
    actions.start("two", through(two));
    actions.start("one", through(two));
    EXPECT_EQ(worked, 2);
    EXPECT_TRUE(actions.isUnderWay("one"));
    one.open();
    EXPECT_FALSE(actions.isUnderWay("one"));
    EXPECT_TRUE(actions.isUnderWay("two"));
    QCoreApplication::processEvents();
    actions.start("one", through(one));
    EXPECT_EQ(worked, 3);
}

TEST_F(UserActions, RunSeveralOfANameWhereEachCounts) {
    actions.startAlways("one", [&] { return pass(&one); });
    actions.startAlways("one", [&] { return pass(&two); });
    EXPECT_TRUE(one.isAwaited());
    EXPECT_TRUE(two.isAwaited());
    one.open();
    EXPECT_TRUE(actions.isUnderWay("one"));
    two.open();
    EXPECT_FALSE(actions.isUnderWay("one"));
}

TEST_F(UserActions, TellWhenTheyEndAlsoWhenTheyFail) {
    int ended = 0;
    actions.startUnrepeated("fails", fail, [&] { ++ended; });
    actions.startUnrepeated(
        "done", [] { return done(); }, [&] { ++ended; });
    EXPECT_EQ(ended, 2);
    EXPECT_FALSE(actions.isUnderWay("fails"));
}

TEST_F(UserActions, RepeatWhatHasFailedAndNotWhatCameAfterIt) {
    int first = 0, second = 0;
    EXPECT_FALSE(actions.repeatFailed());
    actions.start("first", counted(first));
    failed = begun;
    actions.start("second", counted(second));
    QCoreApplication::processEvents();
    EXPECT_TRUE(actions.repeatFailed());
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 1);
    failed.reset();
    EXPECT_FALSE(actions.repeatFailed());
}

TEST_F(UserActions, RepeatTheOneThatFailedThoughTheyEndInAnotherOrder) {
    int first = 0, second = 0;
    actions.start("first", counted(first, one));
    const auto number = begun;
    actions.start("second", counted(second, two));
    two.open();
    QCoreApplication::processEvents();
    failed = number;
    one.open();
    EXPECT_TRUE(actions.repeatFailed());
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 1);
}

TEST_F(UserActions, RepeatNothingThatWasNotStartedHere) {
    int wanted = 0;
    actions.start("wanted", counted(wanted));
    failed = ++begun;
    QCoreApplication::processEvents();
    EXPECT_FALSE(actions.repeatFailed());
}

TEST_F(UserActions, DoNotRepeatWhatIsNotMeantTo) {
    int unrepeated = 0;
    actions.startUnrepeated("unrepeated", counted(unrepeated));
    failed = begun;
    EXPECT_FALSE(actions.repeatFailed());
    EXPECT_EQ(unrepeated, 1);
}

TEST_F(UserActions, EndWithTheDashboard) {
    Gate gate;
    {
        Actions ending{{[] { return 0; }, [] { return std::nullopt; }}};
        ending.start("waits", [&] { return pass(&gate); });
        EXPECT_TRUE(gate.isAwaited());
    }
    EXPECT_FALSE(gate.isAwaited());
}

} // namespace
} // namespace bridge
