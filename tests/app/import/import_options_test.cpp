#include "app/import/import_options.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Words = std::vector<std::string>;

TEST(ImportOptions, TakeFilesInTheirOrder) {
    const auto options = readImportOptions({"b.ics", "-", "a.ics"});
    EXPECT_EQ(options.files, (Words{"b.ics", "-", "a.ics"}));
    EXPECT_EQ(options.profile, std::nullopt);
    EXPECT_FALSE(options.help);
}

TEST(ImportOptions, TakeEverythingAfterTwoDashesAsFiles) {
    EXPECT_EQ(readImportOptions({"--", "--help", "-x"}).files, (Words{"--help", "-x"}));
}

TEST(ImportOptions, TakeAProfileThatExists) {
    const TemporaryFolder folder;
    EXPECT_EQ(readImportOptions({"--profile", folder.path(), "a.ics"}).profile, folder.path());
    EXPECT_THROW(readImportOptions({"--profile", folder.file("missing"), "a.ics"}), ImportUsageError);
}

TEST(ImportOptions, RefuseWhatTheyDoNotUnderstand) {
    for (const auto& words : {Words{}, Words{"--profile"}, Words{"-x", "a.ics"}, Words{"--"}, Words{"--verbose"}})
        EXPECT_THROW(readImportOptions(words), ImportUsageError);
}

TEST(ImportOptions, AskForHelpWithoutAFile) {
    EXPECT_TRUE(readImportOptions({"--help"}).help);
    EXPECT_TRUE(readImportOptions({"-h"}).help);
}

} // namespace
} // namespace bridge
