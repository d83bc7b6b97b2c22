#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "platform/user_defaults.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge {

// What the contract needs of one adapter. `start` gives the settings as a new run of the program would open them, over
// the same place each time.
struct UserDefaultsSite {
    virtual ~UserDefaultsSite() = default;
    virtual std::unique_ptr<UserDefaults> start() = 0;
};

struct UserDefaultsKind {
    std::string name;
    std::function<std::unique_ptr<UserDefaultsSite>()> make;
};

inline void PrintTo(const UserDefaultsKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<UserDefaultsKind>& info) {
    return info.param.name;
}

class UserDefaultsContract : public testing::TestWithParam<UserDefaultsKind> {
protected:
    using Strings = std::vector<std::string>;

    void restart() {
        defaults.reset();
        defaults = site->start();
    }

    std::unique_ptr<UserDefaultsSite> site = GetParam().make();
    std::unique_ptr<UserDefaults> defaults = site->start();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(UserDefaultsContract);

TEST_P(UserDefaultsContract, HasNothingAtFirst) {
    EXPECT_FALSE(defaults->contains("key"));
    EXPECT_EQ(defaults->strings("key"), std::nullopt);
    EXPECT_EQ(defaults->string("key"), std::nullopt);
    EXPECT_EQ(defaults->data("key"), std::nullopt);
}

TEST_P(UserDefaultsContract, FindsEachKindAlsoAfterARestart) {
    defaults->setStrings("strings", {"b", "a", "b"});
    defaults->setString("string", "text");
    defaults->setData("data", "bytes");
    EXPECT_EQ(defaults->savingFailure.get(), std::nullopt);
    for (int run = 1; run <= 2; ++run) {
        EXPECT_TRUE(defaults->contains("strings"));
        EXPECT_EQ(defaults->strings("strings"), (Strings{"b", "a", "b"}));
        EXPECT_EQ(defaults->string("string"), "text");
        EXPECT_EQ(defaults->data("data"), "bytes");
        restart();
    }
}

TEST_P(UserDefaultsContract, AnEmptyValueIsNotAnAbsentOne) {
    defaults->setStrings("strings", {});
    defaults->setString("string", "");
    defaults->setData("data", "");
    for (int run = 1; run <= 2; ++run) {
        EXPECT_TRUE(defaults->contains("strings"));
        EXPECT_TRUE(defaults->contains("string"));
        EXPECT_TRUE(defaults->contains("data"));
        EXPECT_EQ(defaults->strings("strings"), Strings());
        EXPECT_EQ(defaults->string("string"), "");
        EXPECT_EQ(defaults->data("data"), "");
        restart();
    }
}

TEST_P(UserDefaultsContract, AnArrayReadAsAnotherKindGivesNothing) {
    defaults->setStrings("key", {"YQ=="});
    EXPECT_EQ(defaults->string("key"), std::nullopt);
    EXPECT_EQ(defaults->data("key"), std::nullopt);
    EXPECT_TRUE(defaults->contains("key"));
}

TEST_P(UserDefaultsContract, ATextOrABlobReadAsAnArrayGivesNothing) {
    defaults->setString("string", "[\"a\"]");
    defaults->setData("data", "[\"a\"]");
    EXPECT_EQ(defaults->strings("string"), std::nullopt);
    EXPECT_EQ(defaults->strings("data"), std::nullopt);
    EXPECT_EQ(defaults->data("string"), std::nullopt);
}

TEST_P(UserDefaultsContract, ANewValueReplacesOneOfAnyKind) {
    defaults->setStrings("key", {"a"});
    defaults->setString("key", "text");
    EXPECT_EQ(defaults->strings("key"), std::nullopt);
    EXPECT_EQ(defaults->string("key"), "text");
    defaults->setData("key", "bytes");
    restart();
    EXPECT_EQ(defaults->data("key"), "bytes");
}

TEST_P(UserDefaultsContract, KeepsOddTextAndBytes) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    const std::string text = "🦊 \"quoted\" \\ \r\n\t עברית \u0001 " + std::string(10'000, 'x');
    defaults->setStrings("strings 🦊", {text, "", text});
    defaults->setString("", text);
    defaults->setData("data\n", everyByte);
    restart();
    EXPECT_EQ(defaults->strings("strings 🦊"), (Strings{text, "", text}));
    EXPECT_EQ(defaults->string(""), text);
    EXPECT_EQ(defaults->data("data\n"), everyByte);
}

TEST_P(UserDefaultsContract, KeepsTenThousandStrings) {
    Strings many;
    for (int index = 0; index < 10'000; ++index)
        many.push_back("value " + std::to_string(index));
    defaults->setStrings("key", many);
    restart();
    EXPECT_EQ(defaults->strings("key"), many);
}

} // namespace bridge
