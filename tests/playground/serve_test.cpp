#include "tests/playground/playground_process.h"

#include <csignal>
#include <gtest/gtest.h>

namespace bridge {
namespace {

std::vector<std::string> keysOf(const JSONValue::Object& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object)
        keys.push_back(key);
    return keys;
}

TEST(Serve, PrintsOneLineOfJSONAndNothingElse) {
    const TemporaryFolder temporary;
    ServingPlayground playground(temporary);
    const auto announced = playground.announced();
    EXPECT_EQ(keysOf(announced), (std::vector<std::string>{"address", "credential", "profile", "roots"}));
    EXPECT_EQ(*announced.at("address").string(), "127.0.0.1:32123");
    EXPECT_FALSE(announced.at("credential").string()->empty());
    ASSERT_EQ(announced.at("roots").array()->size(), 1U);
    const auto root = *announced.at("roots").array()->at(0).object();
    EXPECT_EQ(keysOf(root), (std::vector<std::string>{"id", "name", "path"}));
    EXPECT_EQ(*root.at("name").string(), "Documents");
    EXPECT_EQ(*root.at("path").string(), playground.profile() + "/Documents");
    EXPECT_TRUE(std::filesystem::is_directory(*root.at("path").string()));

    const auto ended = playground.end(SIGTERM);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "");
}

TEST(Serve, AnswersOverHTTPOnceTheLineIsThere) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary);
    EXPECT_EQ(playground.health().status, 200);
    const auto listed = playground.call("files.list", R"({"rootID":")" + playground.rootID() + R"(","path":""})");
    EXPECT_EQ(listed.status, 200);
    EXPECT_EQ(listed.result().array()->size(), 4U);
}

TEST(Serve, RefusesWhoeverHasAnotherCredential) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary);
    EXPECT_EQ(exchange("GET /health HTTP/1.1\r\n\r\n").code(), "unauthorized");
    EXPECT_EQ(exchange(requestBytes("GET", "/health")).code(), "unauthorized");
}

TEST(Serve, ThrowsTheProfileAwayAtTheEnd) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const TemporaryFolder temporary;
        ServingPlayground playground(temporary);
        EXPECT_TRUE(playground.profile().starts_with(temporary.path().string() + "/"));
        EXPECT_TRUE(std::filesystem::is_directory(playground.profile()));
        EXPECT_EQ(playground.end(signal).status, 0);
        EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
    }
}

TEST(Serve, GivesEachThrowAwayProfileItsOwnCredential) {
    const TemporaryFolder temporary;
    std::string first;
    {
        ServingPlayground playground(temporary);
        first = playground.credential();
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    EXPECT_NE(ServingPlayground(temporary).credential(), first);
}

TEST(Serve, UnpairedRefusesEveryRequest) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary, {"--unpaired"});
    EXPECT_EQ(playground.credential(), "");
    for (const auto& answer :
         {playground.health(), playground.call("permissions.get"), exchange("GET / HTTP/1.1\r\n\r\n")}) {
        EXPECT_EQ(answer.status, 401);
        EXPECT_EQ(answer.code(), "pairing_required");
    }
}

} // namespace
} // namespace bridge
