#include "server/operation.h"
#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Capability = BridgeCapability;

template <typename Action> void forEachOperation(Action action) {
    for (const auto group : operationGroups())
        for (const auto& row : group)
            action(row);
}

TEST(Gates, EveryOperationIsRefusedWithoutItsCapability) {
    RunningBridge bridge;
    bridge.enableAll(false);
    forEachOperation([](const Operation& row) {
        if (!row.capability) return;
        const auto answer = call(row.name);
        EXPECT_EQ(answer.status, 403) << row.name;
        EXPECT_EQ(answer.code(), "capability_denied") << row.name;
        EXPECT_EQ(answer.message(), "Brindlefox capability is disabled: " + std::string(rawValue(*row.capability)))
            << row.name;
        EXPECT_EQ(answer.requestId(), "r") << row.name;
    });
}

TEST(Gates, OneCapabilityOpensItsOwnOperationsAlone) {
    RunningBridge bridge;
    bridge.enableAll(false);
    for (const auto capability : allCapabilities) {
        bridge.enable(capability, true);
        forEachOperation([&](const Operation& row) {
            if (!row.capability) return;
            EXPECT_EQ(call(row.name).code() == "capability_denied", *row.capability != capability) << row.name;
        });
        bridge.enable(capability, false);
    }
}

TEST(Gates, ConfirmationComesAfterTheCapabilityAndBeforeThePayload) {
    RunningBridge bridge;
    forEachOperation([](const Operation& row) {
        if (row.confirm != Confirm::always) return;
        for (const auto confirmed : {std::optional<bool>(), std::optional(false)}) {
            const auto answer = call(row.name, "", confirmed);
            EXPECT_EQ(answer.code(), "confirmation_required") << row.name;
            EXPECT_EQ(answer.message(), "Explicit confirmation is required for " + std::string(row.name) + ".");
        }
        EXPECT_EQ(call(row.name, "", true).message(), "Malformed bridge request: Missing payload.") << row.name;
        EXPECT_EQ(call(row.name, "null", true).message(), "Malformed bridge request: Missing payload.") << row.name;
        EXPECT_EQ(call(row.name, "[]", true).code(), "malformed_request") << row.name;
    });
    EXPECT_EQ(execute(R"({"operation":"calendar.delete","confirmed":null,"payload":{"identifier":"c"}})").code(),
              "confirmation_required");
    bridge.enableAll(false);
    EXPECT_EQ(call("calendar.delete", R"({"identifier":"c"})").code(), "capability_denied");
}

TEST(Gates, PermissionsNeedNoCapability) {
    RunningBridge bridge;
    bridge.enableAll(false);
    const auto answer = call("permissions.get", "[\"ignored\"]");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.result().object()->size(), 11u);
}

TEST(Gates, ExportNeedsTheSwitchOfItsApplication) {
    RunningBridge bridge;
    bridge.enableAll(false);
    const auto exporting = [](const std::string& application) {
        return call("iwork.export", R"({"application":")" + application +
                                        R"(","rootID":"r","inputPath":"a","outputPath":"b","format":"pdf"})");
    };
    EXPECT_EQ(exporting("Pages").message(), "Brindlefox capability is disabled: iwork.pages.export");
    EXPECT_EQ(exporting("NUMBERS").message(), "Brindlefox capability is disabled: iwork.numbers.export");
    EXPECT_EQ(exporting("keynote").message(), "Brindlefox capability is disabled: iwork.keynote.export");
    EXPECT_EQ(exporting("word").message(), "Malformed bridge request: application must be pages, numbers, or keynote.");
    EXPECT_EQ(call("iwork.export").message(), "Malformed bridge request: Missing payload.");
    bridge.enable(Capability::pagesExport, true);
    EXPECT_EQ(exporting("Pages").message(), "Resource not found: r");
}

class WriteGates : public testing::Test {
protected:
    WireAnswer write(const std::string& path, const char* overwrite, std::optional<bool> confirmed = {}) {
        return call("files.write_text",
                    R"({"rootID":")" + bridge.rootID() + R"(","path":")" + path + R"(","content":"new","overwrite":)" +
                        overwrite + "}",
                    confirmed);
    }

    RunningBridge bridge;
};

TEST_F(WriteGates, PayloadComesFirstOfAll) {
    bridge.enableAll(false);
    EXPECT_EQ(call("files.write_text").message(), "Malformed bridge request: Missing payload.");
    EXPECT_EQ(call("files.write_text", R"({"rootID":"x","path":"y","content":"z"})").code(), "malformed_request");
}

TEST_F(WriteGates, NewFileNeedsCreateAndAnExistingOneUpdate) {
    putFile(bridge.documents() / "old.txt", "old");
    bridge.enableAll(false);
    EXPECT_EQ(write("new.txt", "false").message(), "Brindlefox capability is disabled: files.create");
    EXPECT_EQ(write("old.txt", "true", true).message(), "Brindlefox capability is disabled: files.update");
    bridge.enable(Capability::filesCreate, true);
    EXPECT_EQ(write("new.txt", "false").status, 200);
    EXPECT_EQ(write("new.txt", "true", true).code(), "capability_denied");
    bridge.enable(Capability::filesUpdate, true);
    EXPECT_EQ(write("old.txt", "true").message(), "Explicit confirmation is required for files.write_text.");
    EXPECT_EQ(getFile(bridge.documents() / "old.txt"), "old");
    EXPECT_EQ(write("old.txt", "true", true).status, 200);
    EXPECT_EQ(getFile(bridge.documents() / "old.txt"), "new");
    EXPECT_EQ(write("other.txt", "true").code(), "confirmation_required");
}

TEST_F(WriteGates, TooLongATextIsToldBeforeAnUnknownFolder) {
    const auto longWrite = [](const std::string& root, size_t length) {
        return call("files.write_text", R"({"rootID":")" + root + R"(","path":"a","overwrite":false,"content":")" +
                                            std::string(length, 'a') + "\"}");
    };
    EXPECT_EQ(longWrite("unknown", 1'000'001).message(),
              "Malformed bridge request: Text-file writes cannot exceed 1,000,000 UTF-8 bytes.");
    EXPECT_EQ(longWrite("unknown", 1'000'000).message(), "Resource not found: unknown");
    EXPECT_EQ(longWrite(bridge.rootID(), 1'000'001).code(), "malformed_request");
    EXPECT_EQ(longWrite(bridge.rootID(), 1'000'000).status, 200);
    bridge.enableAll(false);
    EXPECT_EQ(longWrite(bridge.rootID(), 1'000'001).code(), "capability_denied");
}

TEST_F(WriteGates, MoveIsConfirmedOnlyWhenOverwriting) {
    putFile(bridge.documents() / "a", "a");
    putFile(bridge.documents() / "b", "b");
    const auto move = [&](const char* overwrite, std::optional<bool> confirmed) {
        return call("files.move",
                    R"({"rootID":")" + bridge.rootID() + R"(","sourcePath":"a","destinationPath":"b","overwrite":)" +
                        overwrite + "}",
                    confirmed);
    };
    EXPECT_EQ(move("true", {}).message(), "Explicit confirmation is required for files.move.");
    EXPECT_EQ(move("false", {}).message(), "Operation failed: The destination exists and overwrite is false.");
    EXPECT_EQ(move("true", true).status, 200);
    EXPECT_EQ(getFile(bridge.documents() / "b"), "a");
}

} // namespace
} // namespace bridge
