#include "tests/bridges/iwork/iwork_bridge_test.h"

namespace bridge {
namespace {

// One operation, how the user knows its application, and whether it changes anything.
struct Operation {
    std::string name;
    std::string application;
    bool changes;
    std::function<Task<>(IWorkAutomationBridge&, std::string rootID)> start;
};

template <typename T> Task<> withoutResult(Task<T> task) {
    co_await std::move(task);
}

const std::vector<Operation> operations{
    {"CreatePages", "Pages", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.createPagesDocument({root, "a.pages", ""}));
     }},
    {"ReadPages", "Pages", false,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.readPagesDocument({root, "Plan.pages"}));
     }},
    {"ReadNumbers", "Numbers", false,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.readNumbersRange({root, "Plan.numbers", {}, {}, "A1"}));
     }},
    {"CreateNumbers", "Numbers", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.createNumbersSpreadsheet({root, "a.numbers", {{{1.0}}}}));
     }},
    {"WriteNumbers", "Numbers", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.writeNumbersRange({root, "Plan.numbers", {}, {}, "A1", {{{1.0}}}}));
     }},
    {"CreateKeynote", "Keynote", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.createKeynotePresentation({root, "a.key", {{"a", {}}}}));
     }},
    {"ExportPages", "Pages", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.exportDocument({"pages", root, "Plan.pages", "a.pdf", "pdf"}));
     }},
    {"ExportKeynote", "Keynote", true,
     [](auto& bridge, auto root) {
         return withoutResult(bridge.exportDocument({"keynote", root, "Plan.key", "a.pdf", "pdf"}));
     }},
};

class ScriptFailures : public IWorkBridgeTest, public testing::WithParamInterface<Operation> {
protected:
    std::string failure(ScriptError error) {
        engine.willFail(std::move(error));
        return failureOf(GetParam().start(bridge, rootID));
    }
};
INSTANTIATE_TEST_SUITE_P(Of, ScriptFailures, testing::ValuesIn(operations),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(ScriptFailures, ToEndInTimeTellWhetherSomethingMayHaveChanged) {
    const auto& name = GetParam().application;
    const auto late = name + " did not respond within 30 seconds. ";
    EXPECT_EQ(failure({-1712, "AppleEvent timed out."}),
              GetParam().changes ? "Operation outcome is unknown: " + late +
                                       "The requested change may still finish; close any dialog and verify the target "
                                       "before retrying."
                                 : "Operation failed: " + late + "Close any dialog shown by " + name + ", then retry.");
}

TEST_P(ScriptFailures, ForLackOfPermissionTellWhereToGiveIt) {
    const auto& name = GetParam().application;
    const auto expected = "Full access to Automation for " + name +
                          ". Open System Settings > Privacy & Security > Automation, enable " + name +
                          " under Brindlefox Apple Bridge, and retry has not been granted.";
    EXPECT_EQ(failure({-1743, "Not authorized."}), expected);
    EXPECT_EQ(failure({-10004, "A privilege violation occurred."}), expected);
}

TEST_P(ScriptFailures, OtherwiseCarryTheirOwnMessage) {
    EXPECT_EQ(failure({-1728, "Can’t get table 1."}), "Operation failed: Can’t get table 1.");
    EXPECT_EQ(failure({std::nullopt, std::nullopt, "{number = 1}"}), "Operation failed: {number = 1}");
}

TEST_P(ScriptFailures, ToCompileNameTheApplication) {
    engine.willNotCompile();
    EXPECT_EQ(failureOf(GetParam().start(bridge, rootID)),
              "Operation failed: Could not compile the typed " + GetParam().application + " command.");
}

TEST_P(ScriptFailures, AreNotTriedAgain) {
    failure({-1712, "AppleEvent timed out."});
    EXPECT_EQ(engine.sources().size(), 1u);
    EXPECT_EQ(failureOf(GetParam().start(bridge, rootID)), "");
}

} // namespace
} // namespace bridge
