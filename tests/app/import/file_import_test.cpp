#include "tests/app/import/import_site.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

TEST(FileImport, TellsTheKindByTheContentAndNotByTheName) {
    ImportSite site;
    const auto contacts = site.takeText("Holidays.ics", cardText("FN:Ada\r\n"));
    EXPECT_TRUE(contacts.isWhole());
    EXPECT_EQ(contacts.kind, FileKind::contacts);
    EXPECT_EQ(contacts.contacts.added, 1u);
    EXPECT_TRUE(contacts.calendars.empty());
    const auto calendar = site.takeText("Friends.vcf", calendarText(sowingEvent));
    EXPECT_TRUE(calendar.isWhole());
    EXPECT_EQ(calendar.kind, FileKind::calendar);
    ASSERT_EQ(calendar.calendars.size(), 1u);
    EXPECT_EQ(calendar.calendars[0].calendar.title, "Friends");
}

TEST(FileImport, TakesEveryEncodingWithAByteOrderMark) {
    const auto wide = [](std::string_view text) {
        std::string bytes = "\xff\xfe";
        for (const char each : text)
            bytes.append(1, each).append(1, '\0');
        return bytes;
    };
    ImportSite site;
    EXPECT_TRUE(site.takeText("a", "\xef\xbb\xbf" + cardText("FN:Jos\u00e9\r\n")).isWhole());
    EXPECT_TRUE(site.takeText("b", wide(cardText("FN:Bea\r\n"))).isWhole());
    EXPECT_EQ(site.givenNames(), (std::vector<std::string>{"Bea", "José"}));
    const auto calendar = site.takeText("c", wide(calendarText(sowingEvent)));
    ASSERT_EQ(calendar.calendars.size(), 1u);
    EXPECT_EQ(site.events(calendar.calendars[0].calendar).at(0).title, "Sowing");
}

TEST(FileImport, TakesNothingOfWhatIsNeither) {
    ImportSite site;
    const auto before = site.calendars(EntityType::event);
    for (const std::string text :
         {"Dear Ada,\n", "\x89PNG\r\n\x1a\n", "{\"a\":1}", "<html></html>", "BEGIN:VNOTE\n", "\n"}) {
        const auto file = site.takeText("Letter.ics", text);
        EXPECT_EQ(file.failure, "It is neither an iCalendar nor a vCard file.") << text;
        EXPECT_FALSE(file.isWhole());
        EXPECT_TRUE(file.calendars.empty());
        EXPECT_EQ(file.kind, std::nullopt);
    }
    EXPECT_EQ(site.takeText("Empty.vcf", "").failure, "It is empty.");
    EXPECT_EQ(site.calendars(EntityType::event), before);
    EXPECT_TRUE(site.contacts().empty());
}

TEST(FileImport, SaysWhyAFileCanNotBeRead) {
    ImportSite site;
    EXPECT_EQ(site.take(site.folder.file("missing.ics")).failure, "No such file or directory.");
    EXPECT_EQ(site.take(site.folder.path()).failure, "It is a folder.");
    putFile(site.folder / "huge.ics", "");
    std::filesystem::resize_file(site.folder / "huge.ics", (size_t{256} << 20) + 1);
    EXPECT_EQ(site.take(site.folder.file("huge.ics")).failure,
              "It is larger than 256 MB, more than can be taken at once.");
}

TEST(FileImport, TellsWhoWaitsWhatItDoes) {
    ImportSite site;
    const auto saying = [&](const std::string& name, const std::string& text) {
        site.progress.clear();
        site.takeText(name, text);
        return site.progress;
    };
    const auto path = [&](const char* name) { return site.folder.file(name); };
    using Sentences = std::vector<std::string>;
    EXPECT_EQ(saying("a", cardText("FN:A\r\n")),
              (Sentences{"Reading " + path("a"), "Saving 1 contact of " + path("a")}));
    EXPECT_EQ(saying("b", calendarText(sowingEvent + seedsTask)),
              (Sentences{"Reading " + path("b"), "Saving 2 items of " + path("b")}));
    EXPECT_EQ(saying("c", "nothing"), Sentences{"Reading " + path("c")});
}

} // namespace
} // namespace bridge
