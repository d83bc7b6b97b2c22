#include "tests/support/public_data.h"
#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <sys/stat.h>

namespace bridge {
namespace {

class FilesOverTheWire : public testing::Test {
protected:
    // Members of a payload beside the root's id.
    std::string payload(const std::string& members) {
        return R"({"rootID":")" + bridge.rootID() + "\"," + members + "}";
    }
    static std::string quoted(const std::string& text) { return writeJSON({text}); }

    RunningBridge bridge;
};

TEST_F(FilesOverTheWire, RootsAreListed) {
    const auto roots = call("files.roots.list").result();
    ASSERT_EQ(roots.array()->size(), 1u);
    const auto& root = *(*roots.array())[0].object();
    EXPECT_EQ(*root.at("id").string(), bridge.rootID());
    EXPECT_EQ(*root.at("name").string(), "Documents");
    EXPECT_EQ(*root.at("path").string(), bridge.documents());
}

TEST_F(FilesOverTheWire, WriteReadListMoveAndTrash) {
    EXPECT_EQ(call("files.write_text", payload(R"("path":"x/y/z.txt","content":"héllo","overwrite":false)")).status,
              200);
    EXPECT_EQ(getFile(bridge.documents() / "x/y/z.txt"), "héllo");
    const auto text = call("files.read_text", payload(R"("path":"./x//y/z.txt")")).result();
    EXPECT_EQ(writeJSON(text),
              R"({"bytes":6,"content":"héllo","path":"./x//y/z.txt","rootID":")" + bridge.rootID() + "\"}");
    EXPECT_EQ(call("files.create_directory", payload(R"("path":"x/b")")).status, 200);
    const auto list = call("files.list", payload(R"("path":"x")")).result();
    ASSERT_EQ(list.array()->size(), 2u);
    EXPECT_EQ(*(*list.array())[0].object()->at("relativePath").string(), "x/b");
    EXPECT_FALSE((*list.array())[0].object()->contains("size"));
    EXPECT_EQ(
        call("files.move", payload(R"("sourcePath":"x/y/z.txt","destinationPath":"w.txt","overwrite":false)")).status,
        200);
    EXPECT_EQ(call("files.delete", payload(R"("path":"w.txt")")).code(), "confirmation_required");
    const auto deleted = call("files.delete", payload(R"("path":"w.txt")"), true);
    EXPECT_EQ(writeJSON(deleted.result()), R"({"deleted":true,"identifier":"w.txt"})");
    EXPECT_FALSE(std::filesystem::exists(bridge.documents() / "w.txt"));
    EXPECT_EQ(getFile(bridge.trash() / "files/w.txt"), "héllo");
}

TEST_F(FilesOverTheWire, RefusalsHaveTheirCodes) {
    EXPECT_EQ(call("files.list", R"({"rootID":"nobody","path":""})").message(), "Resource not found: nobody");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"/etc/passwd")")).message(),
              "Path is outside the authorized roots: /etc/passwd");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"a/../b")")).code(), "unsafe_path");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"a\u0000b")")).code(), "unsafe_path");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"missing")")).message(), "Resource not found: missing");
    EXPECT_EQ(call("files.delete", payload(R"("path":"")"), true).code(), "operation_failed");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"")")).code(), "internal_error");
    std::filesystem::create_symlink("/etc", bridge.documents() / "way out");
    EXPECT_EQ(call("files.read_text", payload(R"("path":"way out/passwd")")).code(), "unsafe_path");
    EXPECT_EQ(call("files.write_text", payload(R"("path":"way out/new","content":"","overwrite":false)")).code(),
              "unsafe_path");
}

TEST_F(FilesOverTheWire, PipeDoesNotHangTheBridge) {
    ASSERT_EQ(mkfifo((bridge.documents() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(call("files.read_text", payload(R"("path":"pipe")")).status, 500);
    EXPECT_EQ(call("files.list", payload(R"("path":"")")).status, 200);
}

TEST_F(FilesOverTheWire, FolderThatWasReplacedIsNeverSilentlyAnotherOne) {
    std::filesystem::rename(bridge.documents(), bridge.documents().parent_path() / "Renamed");
    std::filesystem::create_directory(bridge.documents());
    putFile(bridge.documents() / "other.txt", "another folder's");
    EXPECT_NE(call("files.read_text", payload(R"("path":"other.txt")")).status, 200);
    const auto list = call("files.list", payload(R"("path":"")"));
    EXPECT_TRUE(list.status != 200 || list.result().array()->empty());
}

TEST_F(FilesOverTheWire, LongListArrivesWholeAtASlowReader) {
    for (int index = 0; index < 3000; ++index)
        putFile(bridge.documents() /
                    ("A file with a rather long name, to make the answer long, number " + std::to_string(index)),
                "");
    const auto answer = call("files.list", payload(R"("path":"")"));
    EXPECT_EQ(answer.result().array()->size(), 3000u);
}

TEST(PublicNaughtyStrings, SurviveAsContentAndAsNames) {
    REQUIRE_PUBLIC_DATA("text");
    const RunningBridge bridge;
    const auto strings = parseJSON(readFile(publicData("text/blns.json")));
    size_t asNames = 0;
    for (const auto& each : *strings.array()) {
        const auto& text = *each.string();
        const auto members = R"({"rootID":")" + bridge.rootID() + R"(","overwrite":true,"path":)";
        ASSERT_EQ(
            call("files.write_text", members + R"("content.txt","content":)" + writeJSON(each) + "}", true).status, 200)
            << text;
        EXPECT_EQ(getFile(bridge.documents() / "content.txt"), text);
        EXPECT_EQ(*call("files.read_text", members + "\"content.txt\"}").result().object()->at("content").string(),
                  text);

        // One name of at most 255 bytes that is not special; what is in it is the user's.
        if (text.empty() || text == "." || text == ".." || text.size() > 255 || text.find('/') != std::string::npos)
            continue;
        ASSERT_EQ(call("files.write_text", members + writeJSON({"names/" + text}) + R"(,"content":"x"})", true).status,
                  200)
            << text;
        EXPECT_TRUE(std::filesystem::exists(bridge.documents() / "names" / text)) << text;
        EXPECT_EQ(call("files.delete", members + writeJSON({"names/" + text}) + "}", true).status, 200) << text;
        ++asNames;
    }
    EXPECT_GT(asNames, 300u);
}

} // namespace
} // namespace bridge
