#include "tests/bridges/iwork/iwork_bridge_test.h"

namespace bridge {
namespace {

class KeynotePresentations : public IWorkBridgeTest {
protected:
    Task<IWorkOperationResult> create(std::vector<KeynoteSlideInput> slides) {
        return bridge.createKeynotePresentation({rootID, "New.key", std::move(slides)});
    }
    static std::vector<KeynoteSlideInput> many(size_t count) {
        return std::vector<KeynoteSlideInput>(count, {"Title", std::nullopt});
    }
};

TEST_F(KeynotePresentations, AreMadeByThisScript) {
    EXPECT_EQ(run(create({{"First \"one\"", "Body\nof it"}, {"Second", std::nullopt}, {"Third", ""}})),
              (IWorkOperationResult{"Keynote", "New.key", "create"}));
    EXPECT_EQ(script(), timed(R"(tell application "Keynote"
    set newDocument to missing value
    try
        set newDocument to make new document
        set targetSlide to slide 1 of newDocument
try
    set object text of default title item of targetSlide to "First \"one\""
end try
try
set object text of default body item of targetSlide to "Body\nof it"
end try
set targetSlide to make new slide at end of slides of newDocument
try
    set object text of default title item of targetSlide to "Second"
end try

set targetSlide to make new slide at end of slides of newDocument
try
    set object text of default title item of targetSlide to "Third"
end try
try
set object text of default body item of targetSlide to ""
end try
        save newDocument in POSIX file )" +
                              quoted("New.key") + R"(
        close newDocument saving yes
    on error errorMessage number errorNumber
        if newDocument is not missing value then close newDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(KeynotePresentations, OfOneSlideUseTheOneThatIsThere) {
    run(create({{"Only", std::nullopt}}));
    EXPECT_EQ(script(), timed(R"(tell application "Keynote"
    set newDocument to missing value
    try
        set newDocument to make new document
        set targetSlide to slide 1 of newDocument
try
    set object text of default title item of targetSlide to "Only"
end try

        save newDocument in POSIX file )" +
                              quoted("New.key") + R"(
        close newDocument saving yes
    on error errorMessage number errorNumber
        if newDocument is not missing value then close newDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(KeynotePresentations, HaveOneToAHundredSlides) {
    const auto limits = malformed + "Keynote presentations require between 1 and 100 slides.";
    EXPECT_EQ(refusalOf(create({})), limits);
    EXPECT_EQ(refusalOf(create(many(101))), limits);
    EXPECT_EQ(failureOf(create(many(100))), "");
    EXPECT_EQ(failureOf(create(many(1))), "");
}

} // namespace
} // namespace bridge
