#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

class DocumentsOverTheWire : public testing::Test {
protected:
    DocumentsOverTheWire() {
        for (const auto* name : {"Plan.pages", "Plan.numbers", "Plan.key"})
            putFile(bridge.documents() / name, "document");
    }

    // Members of a payload beside the root's id.
    std::string payload(const std::string& members) {
        return R"({"rootID":")" + bridge.rootID() + "\"," + members + "}";
    }
    void willAnswer(TypedAppleScriptValue value) {
        bridge.onLoop([&](BridgeModel&) { bridge.engine().willAnswer(std::move(value)); });
    }
    void willFail(ScriptError error) {
        bridge.onLoop([&](BridgeModel&) { bridge.engine().willFail(std::move(error)); });
    }
    std::vector<std::string> scripts() {
        return bridge.onLoop([&](BridgeModel&) { return bridge.engine().sources(); });
    }
    static std::string done(const std::string& application, const std::string& path, const std::string& operation) {
        return R"({"application":")" + application + R"(","operation":")" + operation + R"(","path":")" + path + "\"}";
    }

    RunningBridge bridge;
};

TEST_F(DocumentsOverTheWire, AreMade) {
    const auto pages = call("iwork.pages.create", payload(R"("path":"a/b/New.pages","text":"Dear \"Ada\",\nhéllo")"));
    EXPECT_EQ(writeJSON(pages.result()), done("Pages", "a/b/New.pages", "create"));
    EXPECT_TRUE(std::filesystem::is_directory(bridge.documents() / "a/b"));
    const auto numbers =
        call("iwork.numbers.create", payload(R"("path":"./New.numbers","values":[["x",5],[true,null]])"));
    EXPECT_EQ(writeJSON(numbers.result()), done("Numbers", "./New.numbers", "create"));
    const auto keynote = call("iwork.keynote.create",
                              payload(R"("path":"New.key","slides":[{"title":"One","body":null},{"title":"Two"}])"));
    EXPECT_EQ(writeJSON(keynote.result()), done("Keynote", "New.key", "create"));

    const auto run = scripts();
    ASSERT_EQ(run.size(), 3u);
    const auto file = [&](const char* name) {
        return "save newDocument in POSIX file \"" + (bridge.documents() / name).string() + "\"\n";
    };
    EXPECT_THAT(run[0], testing::HasSubstr(R"(set body text of newDocument to "Dear \"Ada\",\nhéllo")"));
    EXPECT_THAT(run[0], testing::HasSubstr(file("a/b/New.pages")));
    EXPECT_THAT(run[1], testing::HasSubstr("set value of cell \"A1\" to \"x\"\n"
                                           "set value of cell \"B1\" to \"5\"\n"
                                           "set value of cell \"A2\" to true\n"
                                           "set value of cell \"B2\" to missing value\n"));
    EXPECT_THAT(run[1], testing::HasSubstr(file("New.numbers")));
    EXPECT_THAT(run[2], testing::HasSubstr(file("New.key")));
    EXPECT_THAT(run[2], testing::Not(testing::HasSubstr("body item")));
}

TEST_F(DocumentsOverTheWire, AreRead) {
    willAnswer(scriptText("Dear Ada,\n"));
    EXPECT_EQ(writeJSON(call("iwork.pages.read", payload(R"("path":"Plan.pages")")).result()),
              R"({"path":"Plan.pages","text":"Dear Ada,\n"})");
    willAnswer(scriptList({scriptText("a"), {}, scriptText("2.5"), scriptText("true")}));
    EXPECT_EQ(
        writeJSON(call("iwork.numbers.read_range", payload(R"("path":"Plan.numbers","range":" b2:c3 ")")).result()),
        R"({"range":"B2:C3","values":["a","","2.5","true"]})");
    EXPECT_EQ(scripts().size(), 2u);
}

TEST_F(DocumentsOverTheWire, AreWritten) {
    const auto written =
        call("iwork.numbers.write_range",
             payload(R"("path":"Plan.numbers","sheet":"S","table":null,"range":"c1","values":[[0.5]])"));
    EXPECT_EQ(writeJSON(written.result()), done("Numbers", "Plan.numbers", "write_range"));
    EXPECT_THAT(scripts().at(0), testing::HasSubstr("            tell sheet \"S\"\n"
                                                    "                tell table 1\n"
                                                    "                    set value of cell \"C1\" to \"0.5\"\n"));
}

TEST_F(DocumentsOverTheWire, AreExported) {
    const auto exported = call("iwork.export", payload(R"("application":"Pages","inputPath":"Plan.pages",)"
                                                       R"("outputPath":"out/Plan.docx","format":"DOCX")"));
    EXPECT_EQ(writeJSON(exported.result()), done("Pages", "out/Plan.docx", "export"));
    EXPECT_THAT(scripts().at(0), testing::HasSubstr(" as Microsoft Word\n"));
}

TEST_F(DocumentsOverTheWire, AreRefusedBeforeAnyScript) {
    const std::string malformed = "Malformed bridge request: ";
    for (const auto& [operation, members, message] :
         std::initializer_list<std::tuple<const char*, const char*, std::string>>{
             {"iwork.pages.create", R"("path":"a.pages")", malformed + ".text: required, but missing"},
             {"iwork.pages.create", R"("path":"a.txt","text":"")", malformed + "Expected a .pages file: a.txt"},
             {"iwork.pages.create", R"("path":"Plan.pages","text":"")",
              "Operation failed: The destination already exists; typed iWork creation and export never overwrite "
              "files."},
             {"iwork.pages.create", R"("path":"../a.pages","text":"")",
              "Path is outside the authorized roots: ../a.pages"},
             {"iwork.pages.read", R"("path":"no.pages")", "Resource not found: no.pages"},
             {"iwork.numbers.read_range", R"("path":"Plan.numbers","range":"A0")",
              malformed + "Numbers range must use A1 notation, for example A1:C10."},
             {"iwork.numbers.create", R"("path":"a.numbers","values":[[1,"x"],[true]])",
              malformed + "Numbers values must form a rectangular grid."},
             {"iwork.numbers.create", R"("path":"a.numbers","values":[[]])",
              malformed + "Numbers values must contain at least one non-empty row."},
             {"iwork.numbers.create", R"("path":"a.numbers","values":[[1,{}]])",
              malformed + ".values[0][1]: Cell values must be text, numbers, booleans, or null."},
             {"iwork.numbers.write_range", R"("path":"Plan.numbers","range":"A1:B3","values":[[1]])",
              malformed + "Numbers values must match the requested 3x2 range."},
             {"iwork.keynote.create", R"("path":"a.key","slides":[])",
              malformed + "Keynote presentations require between 1 and 100 slides."},
             {"iwork.export", R"("application":"numbers","inputPath":"Plan.numbers","outputPath":"a","format":"docx")",
              malformed + "Unsupported Numbers export format: docx"}})
        EXPECT_EQ(call(operation, payload(members)).message(), message) << operation;
    EXPECT_EQ(scripts().size(), 0u);
    EXPECT_EQ(getFile(bridge.documents() / "Plan.pages"), "document");
}

TEST_F(DocumentsOverTheWire, TellWhatBecameOfTheirScript) {
    const auto reading = payload(R"("path":"Plan.pages")");
    const auto creating = payload(R"("path":"New.pages","text":"")");
    willFail({-1712, "AppleEvent timed out."});
    const auto late = call("iwork.pages.read", reading);
    EXPECT_EQ(late.status, 400);
    EXPECT_EQ(late.code(), "operation_failed");
    willFail({-1712, "AppleEvent timed out."});
    const auto unknown = call("iwork.pages.create", creating);
    EXPECT_EQ(unknown.status, 400);
    EXPECT_EQ(unknown.code(), "outcome_unknown");
    willFail({-1743, "Not authorized."});
    const auto denied = call("iwork.pages.create", creating);
    EXPECT_EQ(denied.status, 403);
    EXPECT_EQ(denied.code(), "permission_denied");
    EXPECT_EQ(
        denied.message(),
        "Full access to Automation for Pages. Open System Settings > Privacy & Security > Automation, enable Pages "
        "under Brindlefox Apple Bridge, and retry has not been granted.");
    willFail({-1728, "Can’t get document 1."});
    EXPECT_EQ(call("iwork.pages.read", reading).message(), "Operation failed: Can’t get document 1.");
}

TEST_F(DocumentsOverTheWire, MayBeAsLargeAsARequest) {
    const std::string text(500'000, 'x');
    EXPECT_EQ(call("iwork.pages.create", payload(R"("path":"New.pages","text":")" + text + "\"")).status, 200);
    EXPECT_EQ(call("iwork.pages.create", payload(R"("path":"Other.pages","text":")" + text + "x\"")).message(),
              "Malformed bridge request: Pages text cannot exceed 500,000 characters.");
    std::string row = "[1";
    for (int cell = 1; cell < 100; ++cell)
        row += ",\"" + std::string(90, 'y') + "\"";
    row += "]";
    std::string values = row;
    for (int count = 1; count < 100; ++count)
        values += "," + row;
    EXPECT_EQ(call("iwork.numbers.create", payload(R"("path":"New.numbers","values":[)" + values + "]")).status, 200);
    EXPECT_EQ(call("iwork.numbers.create", payload(R"("path":"Other.numbers","values":[)" + values + "," + row + "]"))
                  .message(),
              "Malformed bridge request: Numbers operations support at most 10,000 cells.");
}

} // namespace
} // namespace bridge
