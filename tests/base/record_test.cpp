#include "base/record.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

struct Slide {
    std::string title;
    std::optional<std::string> body;
    static constexpr auto fields() {
        return std::tuple{required("title", &Slide::title), optional("body", &Slide::body)};
    }
};
static_assert(listsEveryMember<Slide>());

struct AllKinds {
    std::string text;
    std::optional<int64_t> limit;
    double ratio = 0;
    bool flag = false;
    Date when;
    Bytes blob;
    std::vector<Slide> slides;
    std::optional<Slide> cover;
    std::map<std::string, bool> switches;
    JSONValue anything;
    static constexpr auto fields() {
        return std::tuple{required("text", &AllKinds::text),         optional("limit", &AllKinds::limit),
                          required("ratio", &AllKinds::ratio),       required("flag", &AllKinds::flag),
                          required("when", &AllKinds::when),         required("blob", &AllKinds::blob),
                          required("slides", &AllKinds::slides),     optional("cover", &AllKinds::cover),
                          required("switches", &AllKinds::switches), required("anything", &AllKinds::anything)};
    }
};
static_assert(listsEveryMember<AllKinds>());

struct Forgetful {
    std::string listed;
    std::optional<std::string> forgotten;
    static constexpr auto fields() { return std::tuple{required("listed", &Forgetful::listed)}; }
};
static_assert(!listsEveryMember<Forgetful>());

template <typename T> std::string failure(const char* json) {
    try {
        decode<T>(parseJSON(json));
    } catch (const DecodingError& error) {
        return error.what();
    }
    return "decoded";
}

constexpr auto whole =
    R"({"anything":[1,null],"blob":"aGk=","cover":{"body":"b","title":"c"},"flag":true,"limit":5,"ratio":0.5,)"
    R"("slides":[{"title":"one"}],"switches":{"a":true,"b":false},"text":"t","when":"2026-08-14T11:28:41Z"})";

TEST(Record, IsWrittenSortedAndReadBack) {
    EXPECT_EQ(encodeJSON(decode<AllKinds>(parseJSON(whole))), whole);
}

TEST(Record, AbsentAndNullAreTheSame) {
    const auto slide = decode<Slide>(parseJSON(R"({"title":"t","body":null})"));
    EXPECT_FALSE(slide.body);
    EXPECT_EQ(encodeJSON(slide), R"({"title":"t"})");
    EXPECT_EQ(failure<Slide>(R"({"title":null})"), ".title: required, but missing");
}

TEST(Record, UnknownNamesAreIgnored) {
    EXPECT_EQ(decode<Slide>(parseJSON(R"({"title":"t","extra":{}})")).title, "t");
}

TEST(Record, FaultsNameTheirPlace) {
    EXPECT_EQ(failure<std::vector<AllKinds>>("{}"), "expected an array");
    EXPECT_EQ(failure<Slide>("[]"), "expected an object");
    EXPECT_EQ(failure<Slide>(R"({"title":5})"), ".title: expected a string");
    EXPECT_EQ(failure<std::vector<Slide>>(R"([{"title":"a"},{"title":true}])"), "[1].title: expected a string");
}

TEST(Record, IntegersAreWholeAndInRange) {
    EXPECT_EQ(decode<int64_t>(parseJSON("5.0")), 5);
    EXPECT_EQ(decode<int64_t>(parseJSON("1e3")), 1000);
    EXPECT_EQ(decode<int64_t>(parseJSON("-9223372036854775808")), INT64_MIN);
    EXPECT_EQ(failure<int64_t>("5.5"), "expected an integer");
    EXPECT_EQ(failure<int64_t>("9223372036854775808"), "expected an integer");
    EXPECT_EQ(failure<int64_t>("1e300"), "expected an integer");
    EXPECT_EQ(failure<int64_t>("true"), "expected an integer");
    EXPECT_EQ(failure<bool>("1"), "expected true or false");
    EXPECT_EQ(encodeJSON<int64_t>(INT64_MAX), "9223372036854775807");
}

TEST(Record, DatesAndBlobsAreChecked) {
    EXPECT_EQ(failure<Date>(R"("yesterday")"), "expected a date such as 2026-08-14T11:28:41Z");
    EXPECT_EQ(failure<Date>("0"), "expected a date such as 2026-08-14T11:28:41Z");
    EXPECT_EQ(failure<Bytes>(R"("a")"), "expected base64");
}

} // namespace
} // namespace bridge
