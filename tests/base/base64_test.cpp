#include "base/base64.h"

#include <gtest/gtest.h>
#include <random>

namespace bridge {
namespace {

// The vectors of RFC 4648, section 10.
TEST(Base64, AgreesWithTheStandardsExamples) {
    const std::pair<const char*, const char*> examples[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [bytes, text] : examples) {
        EXPECT_EQ(encodeBase64(bytes), text);
        EXPECT_EQ(decodeBase64(text), bytes);
    }
}

TEST(Base64, UsesTheWholeAlphabet) {
    EXPECT_EQ(encodeBase64("\xfb\xff\xbf"), "+/+/");
    EXPECT_EQ(encodeBase64(std::string(3, '\0')), "AAAA");
    EXPECT_EQ(decodeBase64("//79"), "\xff\xfe\xfd");
}

TEST(Base64, ReadsBackEveryLength) {
    std::mt19937 random(4648);
    for (size_t length = 0; length < 300; ++length) {
        std::string bytes;
        for (size_t index = 0; index < length; ++index)
            bytes += static_cast<char>(random());
        const auto text = encodeBase64(bytes);
        EXPECT_EQ(text.size(), (length + 2) / 3 * 4);
        EXPECT_EQ(decodeBase64(text), bytes);
    }
}

TEST(Base64, RefusesEveryOtherForm) {
    for (const char* text : {"Z",        "Zg",   "Zg=",  "Zm8",      "Zm9vY",    "Zg===",  "=",        "==",    "====",
                             "=Zg=",     "Z===", "Z=g=", "Zg==Zg==", "Zm8=Zm8=", "Zm9v\n", "Zm9v\r\n", "Zm\n9", " Zm9v",
                             "Zm9v    ", "Zm 9", "-_-_", "Zm9*",     "Zm9\xc3",  "Zg=A",   "ZgA=\n"})
        EXPECT_FALSE(decodeBase64(text)) << text;
    EXPECT_FALSE(decodeBase64(std::string_view("Zm9\0", 4)));
}

// Two texts must not mean the same bytes.
TEST(Base64, RefusesBitsLeftOver) {
    EXPECT_FALSE(decodeBase64("Zh=="));
    EXPECT_FALSE(decodeBase64("Zm9="));
    EXPECT_FALSE(decodeBase64("//=="));
    EXPECT_TRUE(decodeBase64("/w=="));
}

} // namespace
} // namespace bridge
