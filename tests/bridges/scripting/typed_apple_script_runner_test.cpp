#include "base/apple_bridge_error.h"
#include "bridges/scripting/typed_apple_script_runner.h"
#include "tests/fakes/scripted_engine.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using namespace std::chrono_literals;
using Case = AppleBridgeError::Case;

class ScriptRunner : public testing::Test {
protected:
    Task<TypedAppleScriptValue> start(std::string body, MayHaveChanged mayHaveChanged = MayHaveChanged::no,
                                      std::function<void()> beforehand = nullptr) {
        auto task = runner.run(std::move(body), "Pages", 30s, mayHaveChanged, std::move(beforehand));
        task.start();
        return task;
    }
    // What the script ends with, as the user reads it.
    AppleBridgeError failure(MayHaveChanged mayHaveChanged) {
        auto task = start("return 1", mayHaveChanged);
        try {
            task.take();
        } catch (const AppleBridgeError& error) {
            return error;
        }
        throw std::logic_error("The script did not fail.");
    }
    void expectFailure(Case kind, const std::string& message, MayHaveChanged mayHaveChanged = MayHaveChanged::no) {
        const auto error = failure(mayHaveChanged);
        EXPECT_EQ(error.kind(), kind);
        EXPECT_EQ(error.message(), message);
    }

    ScriptedEngine engine;
    TypedAppleScriptRunner runner{engine};
};

TEST_F(ScriptRunner, WrapsTheBodyInItsTime) {
    start("return 1").take();
    EXPECT_EQ(engine.sources().at(0), "with timeout of 30 seconds\n    return 1\nend timeout");
}

TEST_F(ScriptRunner, LeavesTheBodyAsItIs) {
    start("one\n two {0} %s\\\n").take();
    EXPECT_EQ(engine.sources().at(0), "with timeout of 30 seconds\n    one\n two {0} %s\\\n\nend timeout");
}

TEST_F(ScriptRunner, WritesOtherTimesAndNames) {
    engine.willFail(ScriptError(-1712, "late"));
    auto task = runner.run("x", "Music", 2min, MayHaveChanged::no);
    task.start();
    try {
        task.take();
        FAIL();
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.message(),
                  "Operation failed: Music did not respond within 120 seconds. Close any dialog shown by Music, then "
                  "retry.");
    }
    EXPECT_EQ(engine.sources().at(0), "with timeout of 120 seconds\n    x\nend timeout");
}

TEST_F(ScriptRunner, AnswersWithWhatTheScriptReturned) {
    TypedAppleScriptValue value = scriptList({scriptText("a"), scriptText("b"), scriptText("c")});
    value.items[1].doubleValue = 2.5;
    value.items[1].intValue = 2;
    value.items[2].isNull = true;
    engine.willAnswer(value);
    EXPECT_EQ(start("x").take(), value);
}

TEST_F(ScriptRunner, SaysThatAReadingScriptTookTooLong) {
    engine.willFail(ScriptError(-1712, "AppleEvent timed out."));
    expectFailure(Case::operationFailed, "Operation failed: Pages did not respond within 30 seconds. Close any dialog "
                                         "shown by Pages, then retry.");
}

TEST_F(ScriptRunner, DoesNotKnowWhatAChangingScriptThatTookTooLongDid) {
    engine.willFail(ScriptError(-1712, "AppleEvent timed out."));
    expectFailure(Case::outcomeUnknown,
                  "Operation outcome is unknown: Pages did not respond within 30 seconds. The requested change may "
                  "still finish; close any dialog and verify the target before retrying.",
                  MayHaveChanged::yes);
    EXPECT_EQ(engine.sources().size(), 1u);
}

TEST_F(ScriptRunner, TellsHowToAllowAutomation) {
    for (const int number : {-1743, -10004})
        for (const auto mayHaveChanged : {MayHaveChanged::no, MayHaveChanged::yes}) {
            engine.willFail(ScriptError(number, "Not authorized to send Apple events to Pages."));
            expectFailure(Case::permissionDenied,
                          "Full access to Automation for Pages. Open System Settings > Privacy & Security > "
                          "Automation, enable Pages under Brindlefox Apple Bridge, and retry has not been granted.",
                          mayHaveChanged);
        }
}

TEST_F(ScriptRunner, PassesOnEveryOtherMessageAsItIs) {
    for (const auto mayHaveChanged : {MayHaveChanged::no, MayHaveChanged::yes}) {
        engine.willFail(ScriptError(-1728, "Can’t get sheet \"Ü\"."));
        expectFailure(Case::operationFailed, "Operation failed: Can’t get sheet \"Ü\".", mayHaveChanged);
        engine.willFail(ScriptError(std::nullopt, "It did not work.", "{message = \"It did not work.\"}"));
        expectFailure(Case::operationFailed, "Operation failed: It did not work.", mayHaveChanged);
        engine.willFail(ScriptError(0, ""));
        expectFailure(Case::operationFailed, "Operation failed: ", mayHaveChanged);
    }
}

TEST_F(ScriptRunner, DescribesAnErrorWithoutAMessage) {
    engine.willFail(ScriptError(-50, std::nullopt, "{number = -50; range = {3, 4}}"));
    expectFailure(Case::operationFailed, "Operation failed: {number = -50; range = {3, 4}}");
    engine.willFail(ScriptError(std::nullopt, std::nullopt, "{}"));
    expectFailure(Case::operationFailed, "Operation failed: {}");
}

TEST_F(ScriptRunner, KnowsTheNumberOfAnErrorWithoutAMessage) {
    engine.willFail(ScriptError(-1712, std::nullopt, "{number = -1712}"));
    EXPECT_EQ(failure(MayHaveChanged::yes).kind(), Case::outcomeUnknown);
}

TEST_F(ScriptRunner, SaysThatAScriptCouldNotBeCompiled) {
    engine.willNotCompile();
    expectFailure(Case::operationFailed, "Operation failed: Could not compile the typed Pages command.");
}

TEST_F(ScriptRunner, RunsOneScriptAtATimeInTheOrderOfArrival) {
    engine.hold();
    auto first = start("first"), second = start("second"), third = start("third");
    for (const size_t begun : {1u, 2u, 3u}) {
        EXPECT_EQ(engine.sources().size(), begun);
        EXPECT_EQ(engine.waiting(), 1u);
        engine.releaseOne();
    }
    EXPECT_TRUE(first.done() && second.done() && third.done());
    EXPECT_EQ(engine.mostAtOnce(), 1u);
    EXPECT_NE(engine.sources()[0].find("first"), std::string::npos);
    EXPECT_NE(engine.sources()[1].find("second"), std::string::npos);
    EXPECT_NE(engine.sources()[2].find("third"), std::string::npos);
}

TEST_F(ScriptRunner, RunsTheNextScriptAfterOneThatFailed) {
    engine.hold();
    engine.willFail(ScriptError(-1712, "late"));
    engine.willAnswer(scriptText("second"));
    auto first = start("first"), second = start("second");
    engine.releaseOne();
    EXPECT_THROW(first.take(), AppleBridgeError);
    engine.releaseOne();
    EXPECT_EQ(second.take().stringValue, "second");
}

TEST_F(ScriptRunner, RunsTheNextScriptWhenOneIsDropped) {
    engine.hold();
    std::optional running = start("running"), queued = start("queued");
    auto last = start("last");
    queued.reset();
    EXPECT_EQ(engine.sources().size(), 1u);
    running.reset();
    ASSERT_EQ(engine.sources().size(), 2u);
    EXPECT_EQ(engine.waiting(), 1u);
    engine.releaseOne();
    EXPECT_TRUE(last.done());
    EXPECT_NE(engine.sources()[1].find("last"), std::string::npos);
}

TEST_F(ScriptRunner, DoesNotWaitForAnotherRunner) {
    engine.hold();
    TypedAppleScriptRunner music(engine);
    auto pages = start("pages");
    auto song = music.run("song", "Music", 30s, MayHaveChanged::no);
    song.start();
    EXPECT_EQ(engine.waiting(), 2u);
    EXPECT_EQ(engine.mostAtOnce(), 2u);
    engine.releaseOne();
    engine.releaseOne();
    EXPECT_TRUE(pages.done() && song.done());
}

TEST_F(ScriptRunner, TakesALastLookWhenTheTurnHasCome) {
    engine.hold();
    int looks = 0;
    auto first = start("first", MayHaveChanged::yes, [&] { ++looks; });
    auto second = start("second", MayHaveChanged::yes, [&] {
        ++looks;
        throw AppleBridgeError::operationFailed("Too late.");
    });
    auto third = start("third");
    EXPECT_EQ(looks, 1);
    engine.releaseOne();
    EXPECT_EQ(looks, 2);
    EXPECT_THROW(second.take(), AppleBridgeError);
    engine.releaseOne();
    EXPECT_TRUE(third.done());
    EXPECT_EQ(engine.sources().size(), 2u);
}

} // namespace
} // namespace bridge
