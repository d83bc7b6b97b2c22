#include "base/region.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace bridge {
namespace {

// The locale is settled when ICU first looks at the environment, so these look from a process of their own.
struct UserLanguage : testing::Test {
    UserLanguage() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    static void expect(const char* locale, const char* language) {
        setenv("LC_ALL", locale, 1);
        EXPECT_EXIT(std::exit(userLanguage() == language ? 0 : 1), testing::ExitedWithCode(0), "") << locale;
        unsetenv("LC_ALL");
    }
};

TEST_F(UserLanguage, IsThatOfTheLocale) {
    expect("de_AT.UTF-8", "de-AT");
    expect("pt", "pt");
}

TEST_F(UserLanguage, IsEnglishWhereNobodySays) {
    expect("C", "en");
    expect("POSIX", "en");
}

} // namespace
} // namespace bridge
