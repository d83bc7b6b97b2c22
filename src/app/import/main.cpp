#include "adapters/posix/system_clock.h"
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

// What is imported is taken all the same: it shows whenever the desktop has no calendars of its own.
void mentionTheDesktop(EventLoop& loop) {
    if (const auto service = openCalendarService(loop))
        fmt::print("Note: on this desktop the bridge shows the calendars of {} instead.\n", service->description());
}

std::string storePath(const ImportOptions& options) {
    const auto folder = options.profile ? std::filesystem::absolute(*options.profile).string() : userProfileFolder();
    return folder + "/" + profile::calendars;
}

int importFiles(const ImportOptions& options) {
    EventLoop loop;
    const SystemClock clock;
    SqliteEventStore store(storePath(options), clock);
    std::vector<ImportedFile> files;
    for (const auto& name : options.files) {
        files.push_back(loop.runUntilDone(importCalendarFile(store, name, showProgress)));
        endProgress();
        fmt::print("{}", describe(files.back()));
        std::fflush(stdout);
    }
    fmt::print("{}", summarize(files));
    if (!options.profile) mentionTheDesktop(loop);
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
