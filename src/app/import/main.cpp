#include "adapters/posix/system_clock.h"
#include "app/import/file_import.h"
#include "app/import/import_options.h"
#include "app/import/import_report.h"
#include "app/platform.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fmt/format.h>
#include <unistd.h>

namespace bridge {

namespace {

// One line on the terminal, written over each time.
void showProgress(const std::string& sentence) {
    if (isatty(STDERR_FILENO)) fmt::print(stderr, "\r\x1b[K{} …", printable(sentence));
}

void endProgress() {
    if (isatty(STDERR_FILENO)) fmt::print(stderr, "\r\x1b[K");
}

// What is imported is taken all the same: it shows whenever the desktop has none of its own.
template <typename Service> void mention(const char* kind, const std::unique_ptr<Service>& service) {
    if (service)
        fmt::print("Note: on this desktop the bridge shows the {} of {} instead.\n", kind, service->description());
}

void mentionTheDesktop(EventLoop& loop, const std::vector<ImportedFile>& files) {
    const auto haveSome = [&](FileKind kind) { return std::ranges::count(files, kind, &ImportedFile::kind) > 0; };
    if (haveSome(FileKind::calendar)) mention("calendars", openCalendarService(loop));
    if (haveSome(FileKind::contacts)) mention("contacts", openContactService(loop));
}

int importFiles(const ImportOptions& options) {
    const auto folder = options.profile ? std::filesystem::absolute(*options.profile).string() : userProfileFolder();
    EventLoop loop;
    const SystemClock clock;
    SqliteEventStore calendars(folder + "/" + profile::calendars, clock);
    SqliteContactStore contacts(folder + "/" + profile::contacts, clock);
    std::vector<ImportedFile> files;
    for (const auto& name : options.files) {
        files.push_back(loop.runUntilDone(importFile({calendars, contacts}, name, showProgress)));
        endProgress();
        fmt::print("{}", describe(files.back()));
        std::fflush(stdout);
    }
    fmt::print("{}", summarize(files));
    if (!options.profile) mentionTheDesktop(loop, files);
    return std::ranges::all_of(files, &ImportedFile::isWhole) ? 0 : 1;
}

} // namespace

} // namespace bridge

int main(int count, char** words) {
    using namespace bridge;
    try {
        const auto options = readImportOptions({words + 1, words + count});
        if (options.help) {
            std::fputs(importHelp, stdout);
            return 0;
        }
        return importFiles(options);
    } catch (const ImportUsageError& error) {
        std::fprintf(stderr, "brindlefox-import: %s\n%s", error.what(), importUsage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "brindlefox-import: %s\n", error.what());
        return 1;
    }
}
