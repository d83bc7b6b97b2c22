#include "adapters/eds/source_data.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

const std::string garden = "[Data Source]\nDisplayName[de]=Garten\nDisplayName=Garden\nEnabled=true\n"
                           "Parent=local-stub\n\n[Calendar]\nBackendName=local\nColor=#becedd\n";

TEST(SourceData, SaysWhatTheSourceIs) {
    const SourceData data(garden);
    EXPECT_EQ(data.displayName(), "Garden");
    EXPECT_TRUE(data.isEnabled());
    EXPECT_EQ(data.parent(), "local-stub");
    EXPECT_TRUE(data.has("Calendar"));
    EXPECT_FALSE(data.has("Task List"));
    EXPECT_EQ(data.backend("Calendar"), "local");
    EXPECT_EQ(data.backend("Task List"), "");
}

TEST(SourceData, IsRenamedInEveryLanguageAndKeepsAllElse) {
    SourceData data(garden);
    data.rename("Allotment");
    const auto text = data.text();
    EXPECT_EQ(text.find("Gart"), text.npos);
    EXPECT_NE(text.find("DisplayName=Allotment\n"), text.npos);
    EXPECT_NE(text.find("Color=#becedd\n"), text.npos);
    EXPECT_EQ(SourceData(text).displayName(), "Allotment");
}

TEST(SourceData, KeepsOddTitles) {
    for (const std::string title : {"a;b=c", "[x]", "tab\there", "back\\slash", "🦊", "two\nlines", "#1"}) {
        SourceData data(garden);
        data.rename(title);
        EXPECT_EQ(SourceData(data.text()).displayName(), title);
        EXPECT_EQ(SourceData(data.text()).parent(), "local-stub");
    }
}

TEST(SourceData, OfWhatCannotBeReadIsEmpty) {
    for (const std::string text : {"", "garbage", "[Data Source", "[Data Source]\nParent", "\xff\xfe"}) {
        SourceData data(text);
        EXPECT_EQ(data.displayName(), "");
        EXPECT_EQ(data.parent(), "");
        EXPECT_FALSE(data.has("Calendar"));
    }
}

} // namespace
} // namespace bridge
