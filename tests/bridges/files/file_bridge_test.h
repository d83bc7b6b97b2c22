#pragma once

#include "adapters/posix/posix_bookmarks.h"
#include "adapters/xdg/home_trash.h"
#include "base/apple_bridge_error.h"
#include "bridges/files/file_data_bridge.h"
#include "tests/fakes/failing_bookmarks.h"
#include "tests/fakes/failing_trash.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/support/read_trash.h"

#include <gmock/gmock.h>

namespace bridge {

// What the call failed with, as the user reads it; "" when it went well.
template <typename Call> std::string failureOf(Call call) {
    try {
        call();
    } catch (const AppleBridgeError& error) {
        return error.what();
    } catch (const PlatformError& error) {
        return std::string("platform: ") + error.what();
    }
    return "";
}

inline const auto isPlatformError = testing::StartsWith("platform: ");

// A bridge with one root, beside it a folder that nothing may touch. Each test runs with both ways to open folders.
class FileBridgeTest : public testing::TestWithParam<FolderWalk> {
protected:
    FileBridgeTest() {
        std::filesystem::create_directory(root);
        std::filesystem::create_directory(outside);
        putFile(outside / "secret.txt", "secret");
        rootID = files.addFolder(root.string())->id;
    }

    std::vector<FileItemDescriptor> list(const std::string& path) { return files.listFiles({rootID, path}); }
    std::vector<std::string> names(const std::string& path) {
        std::vector<std::string> found;
        for (const auto& item : list(path))
            found.push_back(item.name);
        return found;
    }
    TextFileContents read(const std::string& path, std::optional<int64_t> maximumBytes = std::nullopt) {
        return files.readText({rootID, path, maximumBytes});
    }
    FileItemDescriptor write(const std::string& path, const std::string& content, bool overwrite = false) {
        return files.writeText({rootID, path, content, overwrite});
    }
    FileItemDescriptor createDirectory(const std::string& path) { return files.createDirectory({rootID, path}); }
    FileItemDescriptor move(const std::string& source, const std::string& destination, bool overwrite = false) {
        return files.moveFile({rootID, source, destination, overwrite});
    }
    void remove(const std::string& path) { files.deleteFile({rootID, path}); }
    std::vector<TrashedItem> trashed() { return readTrash(temporary / "Trash", "/"); }

    TemporaryFolder temporary;
    std::filesystem::path root = temporary / "root";
    std::filesystem::path outside = temporary / "outside";
    MemoryUserDefaults defaults;
    PosixBookmarks posixBookmarks;
    FailingBookmarks bookmarks{posixBookmarks};
    MemoryFolderChooser chooser;
    HomeTrash homeTrash{(temporary / "Trash").string()};
    FailingTrash trash{homeTrash};
    FileDataBridge files{defaults, bookmarks, chooser, trash, GetParam()};
    std::string rootID;
};

inline std::string walkName(const testing::TestParamInfo<FolderWalk>& info) {
    return info.param == FolderWalk::whole ? "Whole" : "ByName";
}

} // namespace bridge

// Under a name of its own in each file: FileBridgeTest itself carries no test.
#define WITH_BOTH_WALKS(suite)                                                                                         \
    INSTANTIATE_TEST_SUITE_P(Walk, suite, testing::Values(FolderWalk::whole, FolderWalk::byName), walkName)
