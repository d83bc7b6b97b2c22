#include "tests/app/import/import_site.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <sys/wait.h>

// The program as a user starts it.

namespace bridge {
namespace {

struct ProgramEnd {
    int status = -1;
    std::string output; // and errors
};

// `words` as a shell reads them.
ProgramEnd run(const std::string& words, const std::string& before = "") {
    FILE* pipe = popen((before + " " IMPORT_PROGRAM " " + words + " 2>&1").c_str(), "r");
    if (!pipe) throw std::runtime_error("no process");
    ProgramEnd end;
    char part[4096];
    for (size_t count; (count = fread(part, 1, sizeof part, pipe)) > 0;)
        end.output.append(part, count);
    end.status = WEXITSTATUS(pclose(pipe));
    return end;
}

TEST(ImportProgram, TakesFilesIntoAProfile) {
    ImportSite site;
    putFile(site.folder / "Garden.ics", calendarText(sowingEvent + seedsTask));
    const auto folder = site.folder.path().string();
    const auto end = run("--profile " + folder + " " + folder + "/Garden.ics");
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, folder + "/Garden.ics\n  1 event as calendar \"Garden\"\n  1 task as reminder list "
                                   "\"Garden\"\nTaken: 1 event and 1 task from 1 file.\n");
    EXPECT_TRUE(std::ranges::count(site.calendars(EntityType::event), std::string("Garden"), &Calendar::title));
}

TEST(ImportProgram, TakesTheOtherFilesWhenOneFails) {
    ImportSite site;
    putFile(site.folder / "Garden.ics", calendarText(sowingEvent));
    const auto folder = site.folder.path().string();
    const auto end = run("--profile " + folder + " " + folder + "/missing.ics " + folder + "/Garden.ics");
    EXPECT_EQ(end.status, 1);
    EXPECT_THAT(end.output, testing::HasSubstr("missing.ics\n  not taken: No such file or directory.\n"));
    EXPECT_THAT(end.output, testing::HasSubstr("1 event as calendar \"Garden\"\n"));
    EXPECT_THAT(end.output, testing::EndsWith("Taken: 1 event from 1 file. Not taken: 1 file.\n"));
}

TEST(ImportProgram, TakesCalendarsAndContactsTogether) {
    ImportSite site;
    putFile(site.folder / "Garden.ics", calendarText(sowingEvent));
    putFile(site.folder / "Friends.vcf", cardText("FN:Ada\r\nCATEGORIES:Choir\r\n") + cardText("FN:Bea\r\n"));
    const auto folder = site.folder.path().string();
    const auto words = "--profile " + folder + " " + folder + "/Friends.vcf " + folder + "/Garden.ics";
    const auto end = run(words);
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, folder + "/Friends.vcf\n  2 contacts and 1 group\n" + folder +
                              "/Garden.ics\n  1 event as calendar \"Garden\"\n"
                              "Taken: 1 event, 2 contacts and 1 group from 2 files.\n");
    EXPECT_EQ(site.givenNames(), (std::vector<std::string>{"Ada", "Bea"}));
    const auto again = run(words);
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.output, testing::HasSubstr("  2 contacts were here already\n"));
    EXPECT_THAT(again.output, testing::EndsWith("Taken: 1 event from 2 files. Here already: 2 contacts.\n"));
}

TEST(ImportProgram, NamesContactsThatItCouldNotTake) {
    ImportSite site;
    putFile(site.folder / "Friends.vcf", cardText("FN:Ada\r\nPHOTO;ENCODING=b:*\r\n") + "BEGIN:VCARD\r\nFN:Bea\r\n");
    const auto folder = site.folder.path().string();
    const auto end = run("--profile " + folder + " " + folder + "/Friends.vcf");
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, folder +
                              "/Friends.vcf\n  1 contact\n"
                              "  left out: the contact that begins in line 6: It has no end, so the rest of it is "
                              "missing.\n"
                              "  not whole: contact “Ada”: The value of its PHOTO is not base64 and was left out.\n"
                              "Taken: 1 contact from 1 file. Left out: 1 item. Not whole: 1 item.\n");
}

TEST(ImportProgram, ReadsContactsFromStandardInput) {
    ImportSite site;
    putFile(site.folder / "Friends", cardText("FN:Ada\r\n"));
    const auto folder = site.folder.path().string();
    const auto end = run("--profile " + folder + " -", "cat " + folder + "/Friends |");
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, "standard input\n  1 contact\nTaken: 1 contact from 1 file.\n");
}

TEST(ImportProgram, ReadsStandardInput) {
    ImportSite site;
    putFile(site.folder / "Garden.ics", calendarText("X-WR-CALNAME:From a pipe\r\n" + sowingEvent));
    const auto folder = site.folder.path().string();
    const auto end = run("--profile " + folder + " -", "cat " + folder + "/Garden.ics |");
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.output, testing::StartsWith("standard input\n  1 event as calendar \"From a pipe\"\n"));
}

TEST(ImportProgram, UsesTheUsersProfile) {
    ImportSite site;
    putFile(site.folder / "Garden.ics", calendarText(sowingEvent));
    putFile(site.folder / "Friends.vcf", cardText("FN:Ada\r\n"));
    const auto folder = site.folder.path().string();
    EXPECT_EQ(run(folder + "/Garden.ics " + folder + "/Friends.vcf",
                  "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent XDG_DATA_HOME=" + folder + "/data")
                  .status,
              0);
    for (const auto* name : {"calendars.db", "contacts.db"})
        EXPECT_TRUE(std::filesystem::exists(site.folder / "data/brindlefox-apple-bridge" / name));
}

TEST(ImportProgram, ExplainsItself) {
    const auto help = run("--help");
    EXPECT_EQ(help.status, 0);
    for (const auto* part : {"NAME\n", "SYNOPSIS\n", "vCard", "--profile DIR", "EXIT STATUS\n", "contacts.db"})
        EXPECT_THAT(help.output, testing::HasSubstr(part));
    for (const auto* words : {"", "--unknown a.ics", "--profile", "--profile /nonexistent a.ics"}) {
        const auto refused = run(words);
        EXPECT_EQ(refused.status, 2) << words;
        EXPECT_THAT(refused.output, testing::StartsWith("brindlefox-import: "));
        EXPECT_THAT(refused.output, testing::HasSubstr("\nUsage: brindlefox-import"));
    }
}

} // namespace
} // namespace bridge
