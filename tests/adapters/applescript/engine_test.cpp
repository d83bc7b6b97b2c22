#include "adapters/applescript/applescript_engine.h"
#include "tests/fakes/memory_application.h"
#include "tests/fakes/memory_vocabulary.h"

#include <future>
#include <gmock/gmock.h>
#include <poll.h>

namespace bridge::applescript {

namespace {

Value waitForEnd(const Command&, ScriptCall& call) {
    pollfd cancelled{call.cancelDescriptor(), POLLIN, 0};
    ::poll(&cancelled, 1, static_cast<int>(call.remaining().count()));
    call.check();
    return "woken";
}

} // namespace

class Engine : public testing::Test {
protected:
    Engine() {
        std::vector<std::unique_ptr<Application>> all;
        for (auto* made : {&shop, &fair}) {
            auto application = std::make_unique<MemoryApplication>(made == &shop ? "Shop" : "Fair", shopVocabulary());
            *made = application.get();
            all.push_back(std::move(application));
        }
        engine = std::make_unique<AppleScriptEngine>(loop, std::move(all));
    }

    TypedAppleScriptValue run(const std::string& source) { return loop.runUntilDone(engine->run(source)); }
    std::string text(const std::string& source) { return run(source).stringValue.value_or("absent"); }
    int errorNumber(const std::string& source) {
        try {
            run(source);
        } catch (const ScriptError& error) {
            return error.number().value_or(0);
        }
        return 1;
    }
    // An application whose "wait" says that it has begun, and how it ended.
    void watch(MemoryApplication& application, std::promise<void>& began) {
        application.actions["wait"] = [&began](const Command& command, ScriptCall& call) {
            began.set_value();
            return waitForEnd(command, call);
        };
    }

    void waitFor(std::promise<void>& promise) {
        const auto kept = promise.get_future();
        while (kept.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready)
            loop.turn();
    }

    EventLoop loop;
    MemoryApplication *shop = nullptr, *fair = nullptr;
    std::unique_ptr<AppleScriptEngine> engine;
};

TEST_F(Engine, RunsScripts) {
    EXPECT_EQ(text("1 + 1"), "2");
    EXPECT_EQ(text("tell application \"shop\" to get name"), "Shop");
    EXPECT_EQ(shop->ended, 1);
}

TEST_F(Engine, SaysHowAScriptFailed) {
    EXPECT_EQ(errorNumber("tell application \"Shop\" to error \"x\" number 42"), 42);
    EXPECT_EQ(errorNumber("tell application \"Nobody\" to activate"), -1728);
    EXPECT_EQ(errorNumber("set"), -2741);
    EXPECT_THROW(run("\xff"), NoScriptError);
}

TEST_F(Engine, KnowsWhatRuns) {
    EXPECT_TRUE(engine->isRunning("SHOP"));
    shop->running = false;
    EXPECT_FALSE(engine->isRunning("Shop"));
    EXPECT_FALSE(engine->isRunning("Nobody"));
}

TEST_F(Engine, TheNextScriptWorksAfterATimeOut) {
    shop->actions["wait"] = waitForEnd;
    EXPECT_EQ(errorNumber("with timeout of 0.01 seconds\ntell application \"Shop\" to wait\nend timeout"), -1712);
    EXPECT_EQ(errorNumber("with timeout of 0.01 seconds\nrepeat\nend repeat\nend timeout"), -1712);
    EXPECT_EQ(text("tell application \"Shop\" to get name"), "Shop");
}

TEST_F(Engine, ADroppedTaskEndsItsScript) {
    std::promise<void> began;
    watch(*shop, began);
    {
        auto task = engine->run("tell application \"Shop\"\ntry\nwait\nend try\nset name to \"Changed\"\nend tell");
        task.start();
        waitFor(began);
    }
    EXPECT_EQ(text("tell application \"Shop\" to get name"), "Shop");
    EXPECT_EQ(shop->ended, 2);
}

TEST_F(Engine, ATaskThatIsDroppedAtOnceRunsNothing) {
    {
        auto task = engine->run("tell application \"Shop\" to set name to \"Changed\"");
        task.start();
    }
    { const auto never = engine->run("tell application \"Shop\" to set name to \"Changed\""); }
    EXPECT_EQ(text("tell application \"Shop\" to get name"), "Shop");
}

TEST_F(Engine, ScriptsOfOneApplicationFollowOneAnother) {
    std::vector<Task<TypedAppleScriptValue>> tasks;
    shop->root->properties["end date"] = "";
    for (int number = 0; number < 20; ++number) {
        tasks.push_back(
            engine->run("tell application \"Shop\"\nset d to favourite shelf's name\nset favourite shelf to "
                        "{name:d & \"" +
                        std::to_string(number % 10) + "\"}\nend tell"));
    }
    shop->root->properties["favourite shelf"] =
        std::make_shared<std::vector<std::pair<std::string, Value>>>(1, std::pair<std::string, Value>("name", ""));
    for (auto& task : tasks)
        task.start();
    for (auto& task : tasks)
        while (!task.done())
            loop.waitOnce();
    EXPECT_EQ(text("tell application \"Shop\" to return name of (get favourite shelf)"), "01234567890123456789");
}

TEST_F(Engine, ScriptsOfDifferentApplicationsRunAtOnce) {
    // Each waits until the other one has begun.
    std::promise<void> shopBegan, fairBegan;
    auto shopped = shopBegan.get_future();
    auto faired = fairBegan.get_future();
    shop->actions["wait"] = [&](const Command&, ScriptCall&) {
        return shopBegan.set_value(), faired.wait(), Value(true);
    };
    fair->actions["wait"] = [&](const Command&, ScriptCall&) {
        return fairBegan.set_value(), shopped.wait(), Value(true);
    };
    auto one = engine->run("tell application \"Shop\" to wait");
    auto other = engine->run("tell application \"Fair\" to wait");
    one.start();
    other.start();
    while (!one.done() || !other.done())
        loop.waitOnce();
    EXPECT_EQ(one.take().stringValue, "true");
    EXPECT_EQ(other.take().stringValue, "true");
}

TEST_F(Engine, AScriptOfSeveralApplicationsHasThemForItself) {
    std::vector<Task<TypedAppleScriptValue>> tasks;
    int inside = 0;
    for (auto* application : {shop, fair})
        application->actions["wait"] = [&inside](const Command&, ScriptCall&) {
            return Value(static_cast<int64_t>(++inside));
        };
    for (int number = 0; number < 30; ++number) {
        const std::string body = number % 2 == 0
                                     ? "tell application \"Shop\" to wait\ntell application \"Fair\" to wait"
                                     : "tell application \"Fair\" to wait\ntell application \"Shop\" to wait";
        tasks.push_back(engine->run(body));
    }
    for (auto& task : tasks)
        task.start();
    for (auto& task : tasks) {
        while (!task.done())
            loop.waitOnce();
        EXPECT_EQ(task.take().intValue % 2, 0);
    }
    EXPECT_EQ(inside, 60);
}

TEST_F(Engine, GoesAwayInTheMidstOfAScript) {
    std::promise<void> began;
    watch(*shop, began);
    auto task = engine->run("tell application \"Shop\" to wait");
    auto next = engine->run("tell application \"Shop\" to wait");
    auto other = engine->run("repeat\nend repeat");
    task.start();
    next.start();
    other.start();
    waitFor(began);
    engine.reset();
    loop.turn();
}

TEST_F(Engine, GoesAwayWhileAScriptIsRead) {
    auto task = engine->run("1");
    task.start();
    engine.reset();
    while (!task.done())
        if (!loop.turn()) break;
}

} // namespace bridge::applescript
