#include "tests/adapters/libreoffice/flat_documents.h"
#include "tests/adapters/libreoffice/office_test.h"

#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge::office {

namespace {

using UserFiles = OfficeTest;

mode_t modeOf(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

} // namespace

TEST_F(UserFiles, KeepTheirPermissionsWhenTheyAreSaved) {
    const auto path = folder.file("a.pages");
    const auto document = savedText("a.pages", "one");
    chmod(path.c_str(), 0640);
    office().save(document, call);
    EXPECT_EQ(modeOf(path), 0640u);
}

TEST_F(UserFiles, AreNotReplacedWhenSomebodyElseHasChangedThem) {
    const auto document = savedText("a.pages", "one");
    putFile(folder / "a.pages", "something else");
    EXPECT_EQ(failureOf([&] { office().save(document, call); }).second,
              "\"a.pages\" was changed by another program since it was opened.");
    EXPECT_EQ(getFile(folder / "a.pages"), "something else");
    std::filesystem::remove(folder / "a.pages");
    EXPECT_NE(failureOf([&] { office().save(document, call); }).second, "");
    EXPECT_THAT(filesInFolder(), testing::IsEmpty());
}

TEST_F(UserFiles, AreNotReplacedWhileAnotherProgramHasThemOpen) {
    const auto document = savedText("a.pages", "one");
    putFile(folder / ".~lock.a.pages#", ",user,host,21.11.2026 10:00,file:///home/user/.config/libreoffice/4;");
    EXPECT_EQ(failureOf([&] { office().save(document, call); }).second, "\"a.pages\" is open in another program.");
    std::filesystem::remove(folder / ".~lock.a.pages#");
    office().save(document, call);
}

TEST_F(UserFiles, OfAnotherFormatCanBeReadAndExportedButNotSaved) {
    const auto source = office().create(DocumentKind::text, call);
    office().setBodyText(source, "from elsewhere", call);
    office().exportTo(source, folder.file("Plan.pages"), ExportFormat::docx, call);
    const auto before = getFile(folder / "Plan.pages");
    const auto document = office().open(DocumentKind::text, folder.file("Plan.pages"), call);
    EXPECT_EQ(office().bodyText(document, call), "from elsewhere");
    EXPECT_EQ(failureOf([&] { office().save(document, call); }).second,
              "\"Plan.pages\" was made by another program in a format that can be read but not written. Export it "
              "instead.");
    EXPECT_EQ(getFile(folder / "Plan.pages"), before);
    office().exportTo(document, folder.file("Plan.txt"), ExportFormat::text, call);
    EXPECT_EQ(getFile(folder / "Plan.txt"), "from elsewhere\n");
    office().saveAs(document, folder.file("Own.pages"), call);
    office().setBodyText(document, "changed", call);
    office().save(document, call);
}

TEST_F(UserFiles, AreNoLinksFoldersOrPipes) {
    savedText("a.pages", "one");
    std::filesystem::create_symlink(folder / "a.pages", folder / "link.pages");
    std::filesystem::create_directory(folder / "Package.pages");
    mkfifo(folder.file("pipe.pages").c_str(), 0600);
    const auto refusal = [&](const std::string& name) {
        return failureOf([&] { office().open(DocumentKind::text, folder.file(name), call); }).second;
    };
    EXPECT_EQ(refusal("link.pages"), "\"link.pages\" is a link, and links are not followed.");
    EXPECT_EQ(refusal("Package.pages"), "\"Package.pages\" is a folder. Documents that consist of a folder can't be "
                                        "opened here; save it as a single file first.");
    EXPECT_EQ(refusal("pipe.pages"), "\"pipe.pages\" is no file.");
    EXPECT_EQ(failureOf([&] { office().open(DocumentKind::text, folder.file("none.pages"), call); }).first, -43);
}

TEST_F(UserFiles, MayHaveNamesThatAreHardToWrite) {
    const std::string name = "caf\u00e9 'n #1%20 \U0001F98A\n\xff.pages";
    const auto document = savedText(name, "one");
    office().setBodyText(document, "two", call);
    office().save(document, call);
    office().close(document, call);
    EXPECT_EQ(office().bodyText(office().open(DocumentKind::text, folder.file(name), call), call), "two");
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{name});
}

TEST_F(UserFiles, ThatAreDamagedEndInAnError) {
    savedText("good.pages", "one");
    const auto good = getFile(folder / "good.pages");
    std::mt19937 random(11);
    for (int turn = 0; turn < 12; ++turn) {
        auto bad = good;
        if (turn % 3 == 0) bad.resize(4 + random() % (bad.size() - 4));
        for (size_t index = 4; turn % 3 == 1 && index < bad.size(); ++index)
            bad[index] = static_cast<char>(random());
        for (int flip = 0; turn % 3 == 2 && flip < 200; ++flip)
            bad[4 + random() % (bad.size() - 4)] = static_cast<char>(random());
        putFile(folder / "bad.pages", bad);
        const auto failure = failureOf([&] { office().open(DocumentKind::text, folder.file("bad.pages"), call); });
        EXPECT_THAT(failure.second, testing::StartsWith("\"bad.pages\" could not be opened.")) << turn;
        EXPECT_EQ(failureOf([&] { office().open(DocumentKind::text, folder.file("good.pages"), call); }).second, "");
    }
}

TEST_F(UserFiles, ThatUnfoldWithoutEndEndInAnError) {
    std::string entities = "<!DOCTYPE x [<!ENTITY a0 \"xxxxxxxxxx\">";
    for (int level = 1; level < 12; ++level) {
        const auto before = "&a" + std::to_string(level - 1) + ";";
        entities += "<!ENTITY a" + std::to_string(level) + " \"";
        for (int time = 0; time < 10; ++time)
            entities += before;
        entities += "\">";
    }
    auto bomb = flatDocument("text", "<text:p>&a11;</text:p>");
    bomb.insert(bomb.find('\n'), entities + "]>");
    putFile(folder / "bomb.pages", bomb);
    applescript::ScriptCall brief(std::chrono::seconds(20));
    EXPECT_NE(failureOf([&] { office().open(DocumentKind::text, folder.file("bomb.pages"), brief); }).second, "");
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
}

TEST_F(UserFiles, LeaveNothingBehindWhenTheyAreClosed) {
    const auto document = savedText("a.pages", "one");
    office().exportTo(document, folder.file("a.pdf"), ExportFormat::pdf, call);
    office().close(document, call);
    const auto again = office().open(DocumentKind::text, folder.file("a.pages"), call);
    EXPECT_THAT(place.filesAtWork(), testing::Contains("document.pages"));
    office().close(again, call);
    EXPECT_THAT(place.filesAtWork(), testing::IsEmpty());
    EXPECT_EQ(filesInFolder(), (std::vector<std::string>{"a.pages", "a.pdf"}));
}

} // namespace bridge::office
