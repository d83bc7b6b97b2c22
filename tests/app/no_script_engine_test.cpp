#include "app/no_script_engine.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(NoScriptEngineTest, SaysThatNoApplicationIsThere) {
    NoScriptEngine engine;
    auto task = engine.run("return 1");
    task.start();
    try {
        task.take();
        FAIL();
    } catch (const ScriptError& error) {
        EXPECT_EQ(error.number(), NoScriptEngine::applicationNotFound);
        EXPECT_EQ(error.message(),
                  "There is no application on this computer that makes, opens and exports such documents.");
    }
    EXPECT_FALSE(engine.isRunning("Pages"));
}

} // namespace
} // namespace bridge
