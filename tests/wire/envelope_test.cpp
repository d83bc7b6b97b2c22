#include "tests/support/public_data.h"
#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

namespace bridge {
namespace {

TEST(Envelope, EchoesTheRequestIdOrLeavesItOut) {
    const RunningBridge bridge;
    EXPECT_EQ(execute(R"({"operation":"permissions.get","requestId":"a b"})").requestId(), "a b");
    EXPECT_EQ(execute(R"({"operation":"permissions.get","requestId":null})").requestId(), std::nullopt);
    EXPECT_EQ(execute(R"({"operation":"permissions.get"})").bytes.find("requestId"), std::string::npos);
    EXPECT_EQ(execute(R"({"operation":"no.such","requestId":"x"})").requestId(), "x");
}

TEST(Envelope, KeysComeSorted) {
    const RunningBridge bridge;
    const auto bytes = execute(R"({"operation":"files.roots.list","requestId":"r"})").bytes;
    const auto body = bytes.substr(bytes.find("\r\n\r\n") + 4);
    EXPECT_TRUE(body.starts_with(R"({"completedAt":"20)")) << body;
    EXPECT_LT(body.find(R"("requestId":"r")"), body.find(R"("result":[{"id":)"));
    EXPECT_EQ(body.find('\n'), std::string::npos);
}

TEST(Envelope, WhatIsNoEnvelopeIsInvalidJSON) {
    const RunningBridge bridge;
    for (const std::string_view body :
         {"", "{", "[]", "5", "null", "\"permissions.get\"", "{}", R"({"operation":5})", R"({"operation":null})",
          R"({"operation":"permissions.get","confirmed":"yes"})", R"({"operation":"permissions.get","confirmed":1})",
          R"({"operation":"permissions.get","requestId":7})", R"({"operation":"permissions.get"} x)",
          R"({"requestId":"r","payload":{}})", "{\"operation\":\"permissions.get\xff\"}",
          R"({"operation":"permissions.get","payload":1e400})", R"({"operation":"permissions.get\ud800"})"}) {
        const auto answer = execute(body);
        EXPECT_EQ(answer.status, 400) << body;
        EXPECT_EQ(answer.code(), "invalid_json") << body;
        EXPECT_FALSE(answer.message().empty());
        EXPECT_EQ(answer.requestId(), std::nullopt) << body;
    }
}

TEST(Envelope, UnknownKeysAndDuplicatesDoNoHarm) {
    const RunningBridge bridge;
    EXPECT_EQ(execute(R"({"operation":"no.such","operation":"permissions.get","extra":[{}],"payload":[1,2]})").status,
              200);
}

TEST(Envelope, HostileDepthIsAnswered) {
    const RunningBridge bridge;
    for (const std::string& body :
         {std::string(100'000, '['), std::string(100'000, '[') + std::string(100'000, ']'),
          R"({"operation":"permissions.get","payload":)" + std::string(100'000, '[') + std::string(100'000, ']') + "}"})
        EXPECT_EQ(execute(body).code(), "invalid_json");
    EXPECT_EQ(
        execute(R"({"operation":"permissions.get","payload":)" + std::string(400, '[') + std::string(400, ']') + "}")
            .status,
        200);
}

TEST(Envelope, UnknownOperationIsNamed) {
    const RunningBridge bridge;
    const auto answer = call("Files.list \u202e\u0001");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.code(), "unsupported_operation");
    EXPECT_EQ(answer.message(), "Unsupported bridge operation: Files.list \u202e\u0001");
}

TEST(Envelope, ZeroByteDoesNotCutAMessage) {
    const RunningBridge bridge;
    EXPECT_EQ(call(std::string_view("x\0y", 3)).message(), std::string("Unsupported bridge operation: x\0y", 33));
    EXPECT_EQ(call("files.list", R"({"rootID":"a\u0000b","path":""})").message(),
              std::string("Resource not found: a\0b", 23));
}

TEST(PublicNaughtyStrings, ComeBackUnharmedAsRequestId) {
    REQUIRE_PUBLIC_DATA("text");
    const RunningBridge bridge;
    const auto strings = parseJSON(readFile(publicData("text/blns.json")));
    for (const auto& each : *strings.array()) {
        const auto answer = execute(R"({"operation":"permissions.get","requestId":)" + writeJSON(each) + "}");
        EXPECT_EQ(answer.status, 200);
        EXPECT_EQ(answer.requestId(), *each.string());
    }
    EXPECT_GT(strings.array()->size(), 400u);
}

TEST(PublicJSONSuite, EveryTextAsAPayloadIsAnswered) {
    REQUIRE_PUBLIC_DATA("json");
    const RunningBridge bridge;
    for (const auto& entry : std::filesystem::directory_iterator(publicData("json"))) {
        const auto name = entry.path().filename().string();
        const auto answer = execute(R"({"operation":"permissions.get","payload":)" + readFile(entry.path()) + "}");
        if (name.starts_with("y_"))
            EXPECT_EQ(answer.status, 200) << name;
        else
            EXPECT_TRUE(answer.status == 200 || answer.code() == "invalid_json") << name;
    }
}

} // namespace
} // namespace bridge
