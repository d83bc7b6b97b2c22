#include "app/options.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace bridge {
namespace {

using Action = Options::Action;

Options parse(std::vector<const char*> arguments) {
    return parseOptions(arguments);
}

TEST(ProgramOptions, MeanAStartByTheUserWhenThereAreNone) {
    EXPECT_EQ(parse({}).action, Action::start);
}

TEST(ProgramOptions, LetAStartAtLoginStayInTheBackground) {
    EXPECT_EQ(parse({"--background"}).action, Action::startHidden);
}

TEST(ProgramOptions, AreExplained) {
    EXPECT_EQ(parse({"--help"}).action, Action::say);
    EXPECT_NE(parse({"--help"}).text.find("--background"), std::string::npos);
    EXPECT_EQ(parse({"--background", "--version"}).text.find("brindlefox-apple-bridge "), 0u);
}

TEST(ProgramOptions, AreRefusedWhenUnknown) {
    EXPECT_THROW(parse({"--frobnicate"}), std::invalid_argument);
    EXPECT_THROW(parse({"file.ics"}), std::invalid_argument);
}

} // namespace
} // namespace bridge
