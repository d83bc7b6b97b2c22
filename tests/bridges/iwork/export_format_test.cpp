#include "base/apple_bridge_error.h"
#include "bridges/iwork/export_format.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace bridge {
namespace {

using enum IWorkApplication;

// What an application exports, by what a request calls it.
using Types = std::map<std::string, std::string>;

const std::map<IWorkApplication, Types> exported{
    {pages,
     {{"pdf", "PDF"},
      {"word", "Microsoft Word"},
      {"docx", "Microsoft Word"},
      {"epub", "EPUB"},
      {"text", "unformatted text"}}},
    {numbers, {{"pdf", "PDF"}, {"excel", "Microsoft Excel"}, {"xlsx", "Microsoft Excel"}, {"csv", "CSV"}}},
    {keynote,
     {{"pdf", "PDF"},
      {"powerpoint", "Microsoft PowerPoint"},
      {"pptx", "Microsoft PowerPoint"},
      {"movie", "QuickTime movie"}}},
};

std::string typeOrRefusal(IWorkApplication application, std::string_view format) {
    try {
        return std::string(exportType(application, format));
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::malformedRequest);
        return error.message();
    }
}

TEST(ExportFormat, IsOneOfItsApplications) {
    for (const auto& [application, types] : exported)
        for (const auto& [owner, formats] : exported)
            for (const auto& [format, type] : formats) {
                const auto refusal = "Malformed bridge request: Unsupported " + std::string(displayName(application)) +
                                     " export format: " + format;
                EXPECT_EQ(typeOrRefusal(application, format), types.contains(format) ? types.at(format) : refusal);
            }
}

TEST(ExportFormat, MayBeInUpperCase) {
    EXPECT_EQ(typeOrRefusal(pages, "DOCX"), "Microsoft Word");
    EXPECT_EQ(typeOrRefusal(keynote, "Movie"), "QuickTime movie");
}

TEST(ExportFormat, ThatIsUnknownIsNamedAsItCame) {
    EXPECT_EQ(typeOrRefusal(numbers, "docx"), "Malformed bridge request: Unsupported Numbers export format: docx");
    EXPECT_EQ(typeOrRefusal(pages, "Rich_Text"),
              "Malformed bridge request: Unsupported Pages export format: Rich_Text");
    EXPECT_EQ(typeOrRefusal(keynote, ""), "Malformed bridge request: Unsupported Keynote export format: ");
    for (const auto* format : {" pdf", "pdf ", "p_df", "_pdf", "PDF\n", "unformatted text", "Microsoft Word"})
        EXPECT_TRUE(typeOrRefusal(pages, format).ends_with(format)) << format;
}

TEST(IWorkApplicationName, MayBeInUpperCase) {
    EXPECT_EQ(iworkApplication("pages"), pages);
    EXPECT_EQ(iworkApplication("Numbers"), numbers);
    EXPECT_EQ(iworkApplication("KEYNOTE"), keynote);
}

TEST(IWorkApplicationName, IsOneOfThree) {
    for (const auto* name : {"", "word", "page", "pages ", "Pages.app", "key"}) {
        try {
            iworkApplication(name);
            ADD_FAILURE() << name;
        } catch (const AppleBridgeError& error) {
            EXPECT_EQ(error.message(), "Malformed bridge request: application must be pages, numbers, or keynote.");
        }
    }
}

} // namespace
} // namespace bridge
