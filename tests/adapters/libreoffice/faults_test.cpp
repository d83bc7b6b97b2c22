#include "tests/adapters/libreoffice/office_test.h"
#include "tests/support/becomes_true.h"

#include <csignal>
#include <sys/resource.h>
#include <thread>

namespace bridge::office {

namespace {

constexpr int connectionInvalid = -609;

// Every file that this process writes ends after some bytes, as on a disk without room. Programs that run already are
// not concerned.
class FullDisk {
public:
    FullDisk() {
        getrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, SIG_IGN);
        const rlimit few{1024, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &few);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit m_before{};
};

class OfficeFaults : public OfficeTest {
protected:
    // Runs the action while the program does nothing any more, and interferes.
    template <typename Action, typename Interference>
    std::pair<int, std::string> whileStopped(const std::string& program, const Action& action,
                                             const Interference& interference) {
        place.stop(program);
        const auto before = place.timesAsleep("brindlefox-office");
        std::pair<int, std::string> failure;
        std::thread script([&] { failure = failureOf(action); });
        // Until the helper has looked at the request, and waits for LibreOffice instead.
        while (place.timesAsleep("brindlefox-office") == before)
            betweenLooks();
        interference();
        script.join();
        return failure;
    }
};

} // namespace

TEST_F(OfficeFaults, LeaveTheFileWholeWhenLibreOfficeIsKilledWhileSaving) {
    const auto document = savedText("a.pages", "one");
    const auto before = getFile(folder / "a.pages");
    office().setBodyText(document, "two", call);
    const auto failure = whileStopped(
        "soffice.bin", [&] { office().save(document, call); }, [&] { place.send("soffice.bin", SIGKILL); });
    EXPECT_EQ(failure.first, connectionInvalid);
    EXPECT_EQ(getFile(folder / "a.pages"), before);
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{"a.pages"});
    EXPECT_EQ(failureOf([&] { office().bodyText(document, call); }).first, ScriptError::noSuchObject);
    const auto again = office().open(DocumentKind::text, folder.file("a.pages"), call);
    EXPECT_EQ(office().bodyText(again, call), "one");
}

TEST_F(OfficeFaults, EndOneCallWhenTheHelperIsKilled) {
    const auto document = savedText("a.pages", "one");
    const auto failure = whileStopped(
        "soffice.bin", [&] { office().setBodyText(document, "two", call); },
        [&] { place.send("brindlefox-office", SIGKILL); });
    EXPECT_EQ(failure.first, connectionInvalid);
    EXPECT_THAT(failure.second, testing::StartsWith("LibreOffice ended unexpectedly."));
    EXPECT_THAT(place.filesAtWork(), testing::IsEmpty());
    place.awaitEnd("soffice.bin");
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
}

TEST_F(OfficeFaults, EndACallThatHangsWithItsTime) {
    const auto document = savedText("a.pages", "one");
    place.stop("soffice.bin");
    applescript::ScriptCall brief(std::chrono::milliseconds(300));
    EXPECT_EQ(failureOf([&] { office().bodyText(document, brief); }).first, ScriptError::timedOut);
    place.awaitEnd("soffice.bin");
    EXPECT_THAT(place.filesAtWork(), testing::IsEmpty());
    EXPECT_FALSE(office().isRunning());
    const auto again = office().open(DocumentKind::text, folder.file("a.pages"), call);
    EXPECT_EQ(office().bodyText(again, call), "one");
}

TEST_F(OfficeFaults, EndACallThatHangsWhenItsScriptIsGivenUp) {
    const auto document = savedText("a.pages", "one");
    applescript::ScriptCall given;
    const auto failure = whileStopped(
        "soffice.bin", [&] { office().bodyText(document, given); }, [&] { given.cancel(); });
    EXPECT_EQ(failure.first, ScriptError::timedOut);
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
}

TEST_F(OfficeFaults, LetAScriptWaitNoLongerThanItMay) {
    const auto document = savedText("a.pages", "one");
    applescript::ScriptCall first;
    const auto failure = whileStopped(
        "soffice.bin", [&] { office().bodyText(document, first); },
        [&] {
            applescript::ScriptCall brief(std::chrono::milliseconds(50));
            EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, brief); }).first, ScriptError::timedOut);
            first.cancel();
        });
    EXPECT_EQ(failure.first, ScriptError::timedOut);
}

TEST_F(OfficeFaults, AreNotSeenWhenLibreOfficeHasDiedInBetween) {
    office().close(office().create(DocumentKind::text, call), call);
    place.send("soffice.bin", SIGKILL);
    place.awaitEnd("soffice.bin");
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
    place.send("brindlefox-office", SIGKILL);
    place.awaitEnd("brindlefox-office");
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
}

TEST_F(OfficeFaults, LeaveTheFileWholeWhenTheDiskIsFull) {
    const auto document = savedText("a.pages", "one");
    const auto before = getFile(folder / "a.pages");
    office().setBodyText(document, "two", call);
    std::pair<int, std::string> failure;
    std::pair<int, std::string> failureOfNew;
    {
        const FullDisk full;
        failure = failureOf([&] { office().save(document, call); });
        failureOfNew = failureOf([&] { office().saveAs(document, folder.file("b.pages"), call); });
    }
    EXPECT_THAT(failure.second, testing::StartsWith("\"a.pages\" can't be written."));
    EXPECT_THAT(failureOfNew.second, testing::StartsWith("\"b.pages\" can't be written."));
    EXPECT_EQ(getFile(folder / "a.pages"), before);
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{"a.pages"});
    office().save(document, call);
    EXPECT_NE(getFile(folder / "a.pages"), before);
}

} // namespace bridge::office
