#include "app/helper_program.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(OwnProgram, IsWhereItWasStartedFrom) {
    EXPECT_EQ(ownProgram(), std::filesystem::canonical("/proc/self/exe").string());
    EXPECT_TRUE(std::filesystem::exists(ownProgram()));
}

} // namespace
} // namespace bridge
