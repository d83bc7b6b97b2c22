#include "tests/adapters/applescript/script_test.h"

#include <poll.h>

namespace bridge::applescript {

// Scripts that want more of something than there is. None of them may crash or go on for ever.
class Limits : public ScriptTest {
protected:
    int errorWithin(const std::string& seconds, const std::string& body) {
        return errorNumber("with timeout of " + seconds + " seconds\n" + body + "\nend timeout");
    }
};

TEST_F(Limits, AnEndlessLoopTimesOut) {
    EXPECT_EQ(errorWithin("0.01", "repeat\nend repeat"), -1712);
    EXPECT_EQ(errorWithin("0.01", "repeat while true\nset x to 1\nend repeat"), -1712);
    EXPECT_EQ(errorWithin("0.01", "repeat with i from 1 to 2 by 0\nend repeat"), -1712);
    EXPECT_EQ(errorWithin("0.01", "repeat 1000000000000 times\nend repeat"), -1712);
    EXPECT_EQ(errorText("with timeout of 0 seconds\nrepeat\nend\nend"), "AppleEvent timed out.");
}

TEST_F(Limits, NothingIsCaughtOnceTheTimeIsOver) {
    EXPECT_EQ(errorWithin("0.01", "repeat\ntry\nrepeat\nend repeat\non error\nreturn 5\nend try\nend repeat"), -1712);
    EXPECT_EQ(errorWithin("0.01", "on f()\nend f"), -2741);
}

TEST_F(Limits, AnInnerTimeEndsOnlyItsBlock) {
    EXPECT_EQ(text("try\nwith timeout of 0 seconds\nrepeat\nend\nend timeout\non error number n\nreturn n\nend"),
              "-1712");
    // It narrows, and never widens.
    EXPECT_EQ(errorWithin("0.01", "with timeout of 1000 seconds\nrepeat\nend repeat\nend timeout"), -1712);
}

TEST_F(Limits, AnApplicationHearsHowMuchTimeIsLeft) {
    std::chrono::milliseconds heard{};
    shop->actions["wait"] = [&](const Command&, ScriptCall& call) {
        heard = call.remaining();
        return MissingValue{};
    };
    run("with timeout of 30 seconds\ntell application \"Shop\" to wait\nend timeout");
    EXPECT_GT(heard.count(), 0);
    EXPECT_LE(heard.count(), 30'000);
    run("tell application \"Shop\" to wait");
    EXPECT_GT(heard.count(), 30'000);
    EXPECT_LE(heard.count(), 120'000);
}

TEST_F(Limits, AnApplicationThatWaitsTimesOut) {
    shop->actions["wait"] = [](const Command&, ScriptCall& call) -> Value {
        pollfd cancelled{call.cancelDescriptor(), POLLIN, 0};
        EXPECT_EQ(::poll(&cancelled, 1, static_cast<int>(call.remaining().count())), 0);
        call.check();
        return "woken";
    };
    EXPECT_EQ(errorWithin("0.01", "tell application \"Shop\" to wait"), -1712);
    EXPECT_EQ(text("tell application \"Shop\" to name"), "Shop");
}

TEST_F(Limits, CallsNestOnlySoDeep) {
    EXPECT_EQ(errorNumber("on f(n)\nreturn f(n + 1)\nend f\nf(1)"), -2706);
    EXPECT_EQ(errorNumber("on f(n)\ntell {}\nif true then\nreturn {1 + (f(n + 1))}\nend if\nend tell\nend f\nf(1)"),
              -2706);
    EXPECT_EQ(text("on f(n)\ntry\nreturn f(n + 1)\non error number e\nreturn e\nend try\nend f\nf(1)"), "-2706");
    EXPECT_EQ(text("on sum(n)\nif n = 0 then return 0\nreturn n + sum(n - 1)\nend sum\nsum(100)"), "5050");
}

TEST_F(Limits, MemoryEnds) {
    EXPECT_EQ(errorNumber("set t to \"0123456789\"\nrepeat\nset t to t & t\nend repeat"), -108);
    EXPECT_EQ(errorNumber("set l to {1, 2, 3}\nrepeat\nset l to l & l\nend repeat"), -108);
    EXPECT_EQ(errorNumber("set t to \"0123456789\"\nset l to {}\nrepeat 20 times\nset t to t & t\nend repeat\nrepeat\n"
                          "set end of l to t & \"x\"\nend repeat"),
              -108);
}

TEST_F(Limits, MemoryThatIsNotUsedAnyMoreCounts) {
    EXPECT_EQ(text("set t to \"0123456789\"\nrepeat 20 times\nset t to t & t\nend repeat\nrepeat 100 times\nset u to t "
                   "& \"x\"\nend repeat\nlength of u"),
              "10485761");
}

TEST_F(Limits, ListsMayContainThemselves) {
    EXPECT_EQ(text("set l to {1}\nset end of l to l\ncount l"), "2");
    EXPECT_EQ(errorNumber("set l to {1}\nset end of l to l\nl as text"), -2706);
    EXPECT_EQ(errorNumber("set l to {1}\nset end of l to l\nreturn l"), -2706);
    EXPECT_EQ(errorNumber("set l to {1}\nset m to {1}\nset end of l to m\nset end of m to l\nl = {1, {1, {2}}}"), 1);
    EXPECT_EQ(errorNumber("set l to {1}\nset end of l to l\nset m to {1}\nset end of m to m\nl = m"), -2706);
    EXPECT_EQ(errorNumber("set r to {a:1}\nset a of r to r\nset s to {a:1}\nset a of s to s\nr = s"), -2706);
}

TEST_F(Limits, ListsMayNestAsDeepAsTheyWant) {
    EXPECT_EQ(text("set l to {}\nrepeat 100000 times\nset l to {l}\nend repeat\nset l to 1\nl"), "1");
    EXPECT_EQ(errorNumber("set l to {}\nrepeat 100000 times\nset l to {l}\nend repeat\nl"), -2706);
}

TEST_F(Limits, SharedListsEndSomewhereToo) {
    const std::string large = "set t to \"0123456789\"\nrepeat 16 times\nset t to t & t\nend repeat\n";
    const std::string shared = "repeat 60 times\nset l to {l, l}\nend repeat\n";
    EXPECT_EQ(errorNumber(large + "set l to t\n" + shared + "return l"), -108);
    EXPECT_EQ(errorNumber(large + "set l to t\n" + shared + "l as text"), -108);
    EXPECT_EQ(errorNumber(large + "set l to t\n" + shared + "tell application \"Shop\" to sell l"), -108);
    EXPECT_EQ(errorWithin("0.01", "set l to {}\n" + shared + "set m to l\nset l to {}\n" + shared + "l = m"), -1712);
}

TEST_F(Limits, LargeTextsAreSearchedInTime) {
    EXPECT_EQ(
        text("set t to \"aaaaaaaaaa\"\nrepeat 16 times\nset t to t & t\nset u to t\nend repeat\nset t to t & t\nt "
             "contains u & \"b\""),
        "false");
}

} // namespace bridge::applescript
