#include "base/platform_error.h"
#include "base/shared_library.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

// The mathematics of the C library are there wherever we are.
#ifdef __APPLE__
constexpr const char* mathematics = "libm.dylib";
#else
constexpr const char* mathematics = "libm.so.6";
#endif

TEST(SharedLibrary, GivesTheFunctionsInIt) {
    double (*cubeRoot)(double) = SharedLibrary(mathematics)["cbrt"];
    EXPECT_DOUBLE_EQ(cubeRoot(27), 3);
}

TEST(SharedLibrary, SaysWhatIsNotThere) {
    EXPECT_THROW(SharedLibrary("/nowhere/none.so"), PlatformError);
    const SharedLibrary library(mathematics);
    try {
        library["noSuchFunction"];
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_NE(std::string(error.what()).find("noSuchFunction"), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace bridge
