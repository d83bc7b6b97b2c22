#pragma once

#include "adapters/posix/posix_bookmarks.h"
#include "adapters/xdg/home_trash.h"
#include "base/apple_bridge_error.h"
#include "bridges/iwork/iwork_automation_bridge.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/fakes/scripted_engine.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge {

// A bridge with one folder, and beside it another that nothing may touch. The applications do nothing of themselves.
class IWorkBridgeTest : public testing::Test {
protected:
    IWorkBridgeTest() {
        std::filesystem::create_directory(root);
        std::filesystem::create_directory(outside);
        rootID = files.addFolder(root.string())->id;
        for (const auto* name : {"Plan.pages", "Plan.numbers", "Plan.key"})
            putFile(root / name, "document");
    }

    template <typename T> static Task<T> start(Task<T> task) {
        task.start();
        return task;
    }
    template <typename T> static T run(Task<T> task) {
        task.start();
        if (!task.done()) throw std::logic_error("It waits.");
        return task.take();
    }
    // What it failed with, as the user reads it; "" when it went well.
    template <typename T> static std::string failureOf(Task<T> task) {
        try {
            run(std::move(task));
        } catch (const AppleBridgeError& error) {
            return error.message();
        } catch (const PlatformError& error) {
            return std::string("platform: ") + error.what();
        }
        return "";
    }
    // The same for what must not come as far as a script.
    template <typename T> std::string refusalOf(Task<T> task) {
        const auto before = engine.sources().size();
        auto refusal = failureOf(std::move(task));
        EXPECT_EQ(engine.sources().size(), before) << refusal;
        return refusal;
    }

    // The only script so far.
    std::string script() const {
        EXPECT_EQ(engine.sources().size(), 1u);
        return engine.sources().at(0);
    }
    // What the engine gets for a script, and the location of a path as it stands there.
    static std::string timed(const std::string& body) {
        return "with timeout of 30 seconds\n    " + body + "\nend timeout";
    }
    std::string quoted(const std::string& path) const { return "\"" + (root / path).string() + "\""; }

    TemporaryFolder temporary;
    std::filesystem::path root = temporary / "root";
    std::filesystem::path outside = temporary / "outside";
    MemoryUserDefaults defaults;
    PosixBookmarks bookmarks;
    MemoryFolderChooser chooser;
    HomeTrash trash{(temporary / "Trash").string()};
    FileDataBridge files{defaults, bookmarks, chooser, trash};
    ScriptedEngine engine;
    IWorkAutomationBridge bridge{files, engine};
    std::string rootID;
};

inline const std::string malformed = "Malformed bridge request: ";
inline const std::string destinationExists =
    "Operation failed: The destination already exists; typed iWork creation and export never overwrite files.";

} // namespace bridge
