#include "server/operation.h"
#include "tests/playground/playground_process.h"

#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <sstream>

namespace bridge {
namespace {

// The rows of a table of the tour, as often as each operation was called.
std::map<std::string, int> rowsOf(const std::string& output) {
    std::map<std::string, int> rows;
    const std::regex row(R"(^([a-z_.]+) +([2-5]\d\d) +\d+  \S.*)");
    std::istringstream lines(output);
    std::smatch found;
    for (std::string line; std::getline(lines, line);)
        if (std::regex_match(line, found, row)) ++rows[found[1]];
    return rows;
}

// Steps that go another way than they should, because this build has no program that stands in for Pages or Music, are
// shown like all others, and told by the status.
#ifdef HAVE_STAND_INS
constexpr int whenTouredHere = 0;
#else
constexpr int whenTouredHere = 1;
#endif

TEST(Tour, ShowsEveryOperation) {
    const TemporaryFolder temporary;
    const auto ended = runPlayground(temporary, {});
    EXPECT_EQ(ended.status, whenTouredHere);
    EXPECT_EQ(ended.errors, "");
    EXPECT_TRUE(std::regex_search(ended.output, std::regex(R"(^operation +status +ms +result\n)")));

    const auto rows = rowsOf(ended.output);
    EXPECT_EQ(rows.size(), 52U);
    for (const auto group : operationGroups())
        for (const auto& operation : group)
            EXPECT_TRUE(rows.contains(std::string(operation.name))) << operation.name;
}

TEST(Tour, EndsWithALineForCurl) {
    const TemporaryFolder temporary;
    const auto output = runPlayground(temporary, {}).output;
    std::smatch found;
    ASSERT_TRUE(std::regex_search(output, found,
                                  std::regex(R"(\ncurl -s --noproxy .\*. -H 'Authorization: Bearer ([^' ]+)' )"
                                             R"(http://127\.0\.0\.1:32123/v1/execute -d '([^']+)'\n$)")));
    const auto body = parseJSON(found[2].str());
    EXPECT_EQ(*body.object()->at("operation").string(), "files.list");
    EXPECT_THAT(found[1].str(), testing::MatchesRegex("[A-Za-z0-9_-]{43}"));
}

TEST(Tour, SaysWhatThisMachineLacks) {
    const TemporaryFolder temporary;
    const std::string programs = getenv("PATH");
    setenv("PATH", temporary.path().c_str(), 1);
    const auto ended = runPlayground(temporary, {});
    setenv("PATH", programs.c_str(), 1);
    EXPECT_EQ(ended.status, whenTouredHere);
    EXPECT_THAT(ended.output, testing::HasSubstr("\nNot everything could be shown. Valhalla needs node, which is not "
                                                 "installed.\n"));
}

TEST(Tour, ThrowsItsProfileAway) {
    const TemporaryFolder temporary;
    runPlayground(temporary, {});
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

TEST(Tour, GoesTheSameWayTwiceThroughAKeptProfile) {
    const TemporaryFolder temporary;
    const std::vector<std::string> words{"--profile", temporary.file("kept")};
    EXPECT_EQ(runPlayground(temporary, words).status, whenTouredHere);
    EXPECT_EQ(runPlayground(temporary, words).status, whenTouredHere);
}

TEST(Tour, SaysWhatDidNotAnswerAsItShould) {
    const TemporaryFolder temporary;
    const auto ended = runPlayground(temporary, {"--capabilities", "none"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, testing::HasSubstr("  ^ expected success\n"));
    EXPECT_EQ(rowsOf(ended.output).size(), 52U);
}

} // namespace
} // namespace bridge
