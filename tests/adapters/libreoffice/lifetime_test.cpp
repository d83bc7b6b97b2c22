#include "tests/adapters/libreoffice/office_test.h"
#include "tests/support/child_process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>

namespace bridge::office {

namespace {

using Lifetime = OfficeTest;

std::unique_ptr<PrivateOffice> officeWith(LibreOfficeOptions options) {
    return std::make_unique<PrivateOffice>(std::move(options));
}

} // namespace

TEST_F(Lifetime, BeginsWithTheFirstDocument) {
    EXPECT_FALSE(office().isRunning());
    EXPECT_THAT(place.processes("soffice.bin"), testing::IsEmpty());
    office().create(DocumentKind::text, call);
    EXPECT_TRUE(office().isRunning());
    EXPECT_EQ(place.processes("soffice.bin").size(), 1u);
}

TEST_F(Lifetime, GoesOnWhenTheThreadThatBeganItHasEnded) {
    DocumentID document{};
    std::thread([&] { document = office().create(DocumentKind::text, call); }).join();
    const auto first = place.processes("soffice.bin");
    std::thread([&] { office().setBodyText(document, "warm", call); }).join();
    EXPECT_EQ(office().bodyText(document, call), "warm");
    EXPECT_EQ(place.processes("soffice.bin"), first);
}

TEST_F(Lifetime, EndsAfterATimeWithoutDocuments) {
    LibreOfficeOptions options;
    options.idle = std::chrono::seconds(0);
    const auto brief = officeWith(options);
    const auto document = brief->office().create(DocumentKind::text, call);
    EXPECT_EQ(brief->office().bodyText(document, call), "");
    brief->office().close(document, call);
    brief->awaitEnd("soffice.bin");
    brief->awaitEnd("brindlefox-office");
    EXPECT_FALSE(brief->office().isRunning());
    EXPECT_EQ(failureOf([&] { brief->office().create(DocumentKind::text, call); }).second, "");
}

TEST_F(Lifetime, EndsAfterManyDocumentsOrWithMuchMemoryToBeginAnew) {
    LibreOfficeOptions options;
    options.documents = 2;
    const auto worn = officeWith(options);
    const auto first = worn->office().create(DocumentKind::text, call);
    const auto process = worn->processes("soffice.bin");
    const auto second = worn->office().create(DocumentKind::text, call);
    worn->office().close(first, call);
    EXPECT_EQ(worn->processes("soffice.bin"), process);
    worn->office().close(second, call);
    worn->awaitEnd("soffice.bin");
    worn->office().create(DocumentKind::text, call);
    EXPECT_NE(worn->processes("soffice.bin"), process);

    options.documents = 200;
    options.residentBytes = 1;
    const auto large = officeWith(options);
    large->office().close(large->office().create(DocumentKind::text, call), call);
    large->awaitEnd("soffice.bin");
}

TEST_F(Lifetime, EndsWithItsOwnerAndLeavesNothing) {
    savedText("a.pages", "one");
    place.end();
    place.awaitEnd("soffice.bin");
    place.awaitEnd("brindlefox-office");
    EXPECT_TRUE(std::filesystem::is_empty(place.workFolder()));
}

TEST_F(Lifetime, EndsWithABridgeThatIsKilled) {
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe2(ready.data(), O_CLOEXEC), 0);
    const pid_t bridge = fork();
    ASSERT_GE(bridge, 0);
    if (bridge == 0) {
        applescript::ScriptCall own;
        office().create(DocumentKind::text, own);
        static_cast<void>(!write(ready[1], "!", 1));
        pause();
        _exit(0);
    }
    close(ready[1]); // one that crashes is heard of, too
    char said = 0;
    ASSERT_EQ(read(ready[0], &said, 1), 1);
    close(ready[0]);
    EXPECT_EQ(place.processes("soffice.bin").size(), 1u);
    kill(bridge, SIGKILL);
    waitpid(bridge, nullptr, 0);
    place.awaitEnd("soffice.bin");
    // Its folder goes when the next one begins.
    office().create(DocumentKind::text, call);
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(place.workFolder()), std::filesystem::directory_iterator()),
        1);
}

TEST_F(Lifetime, SaysWhatIsMissing) {
    const auto reason = [](const OfficePrograms& programs) {
        LibreOfficeOptions options;
        options.programs = programs;
        return officeWith(options)->office().whyUnavailable();
    };
    OfficePrograms programs;
    programs.home = "/nowhere";
    EXPECT_EQ(reason(programs), "LibreOffice is not installed. Install libreoffice-writer, libreoffice-calc and "
                                "libreoffice-impress.");
    programs = {};
    programs.bubblewrap = "/nowhere/bwrap";
    EXPECT_EQ(reason(programs), "bubblewrap is not installed. LibreOffice is only run inside it; install bubblewrap.");
    programs.bubblewrap = "/usr/bin/false";
    EXPECT_THAT(reason(programs).value(), testing::HasSubstr("make namespaces"));

    LibreOfficeOptions options;
    options.programs = programs;
    const auto none = officeWith(options);
    EXPECT_THAT(failureOf([&] { none->office().create(DocumentKind::text, call); }).second,
                testing::HasSubstr("make namespaces"));
}

} // namespace bridge::office
