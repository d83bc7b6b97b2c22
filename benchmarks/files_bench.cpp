#include "adapters/posix/posix_bookmarks.h"
#include "adapters/xdg/home_trash.h"
#include "benchmarks/measure.h"
#include "bridges/files/file_data_bridge.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

void require(bool condition) {
    if (!condition) std::exit(1);
}

// The same promises with bare calls: a temporary file, flushed, renamed, the folder flushed.
void writeBare(const std::string& folder, const std::string& content) {
    const std::string temporary = folder + "/.bare";
    const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    require(write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size()));
    require(fsync(file) == 0);
    close(file);
    require(rename(temporary.c_str(), (folder + "/bare.txt").c_str()) == 0);
    const int parent = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(fsync(parent) == 0);
    close(parent);
}

size_t readBare(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::string content(1'000'001, '\0');
    const auto count = static_cast<size_t>(read(file, content.data(), content.size()));
    close(file);
    return count;
}

size_t listBare(const std::string& path) {
    DIR* folder = opendir(path.c_str());
    size_t count = 0;
    while (const auto* entry = readdir(folder)) {
        struct stat status;
        if (entry->d_name[0] != '.' && fstatat(dirfd(folder), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            ++count;
    }
    closedir(folder);
    return count;
}

double microseconds(int times, const std::function<void()>& action) {
    return secondsFor([&] {
               for (int time = 0; time < times; ++time)
                   action();
           }) /
           times * 1e6;
}

} // namespace

// File operations through the bridge, against the bare calls with the same promises.
int main() {
    const TemporaryFolder folder, trashFolder;
    MemoryUserDefaults defaults;
    PosixBookmarks bookmarks;
    MemoryFolderChooser chooser;
    HomeTrash trash(trashFolder.file("Trash"));
    FileDataBridge files(defaults, bookmarks, chooser, trash);
    const auto root = files.addFolder(folder.path())->id;

    const std::string content(1'000'000, 'x');
    report("files.write_text of 1,000,000 bytes",
           compare(
               31, [&] { return microseconds(1, [&] { writeBare(folder.path(), content); }); },
               [&] { return microseconds(1, [&] {
                         files.writeText({root, "ours.txt", content, true});
                     }); }),
           "µs");
    report("files.read_text of 1,000,000 bytes",
           compare(
               31,
               [&] { return microseconds(10, [&] { require(readBare(folder.file("ours.txt")) == content.size()); }); },
               [&] {
                   return microseconds(10, [&] {
                       require(files.readText({root, "ours.txt", 1'000'000}).bytes == 1'000'000);
                   });
               }),
           "µs");

    const auto many = folder.file("many");
    mkdir(many.c_str(), 0755);
    for (int index = 0; index < 10'000; ++index)
        close(open(fmt::format("{}/Document number {:05}.txt", many, index * 7919 % 10'000).c_str(),
                   O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    report("files.list of 10,000 entries",
           compare(
               15, [&] { return microseconds(1, [&] { require(listBare(many) == 10'000); }); },
               [&] { return microseconds(1, [&] {
                         require(files.listFiles({root, "many"}).size() == 10'000);
                     }); }),
           "µs");
}
