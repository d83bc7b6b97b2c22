#include "tests/architecture/include_arrows.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace bridge::architecture {
namespace {

const std::filesystem::path sourceRoot = BRIDGE_SOURCE_ROOT;

struct Source {
    std::string name; // relative to the source root
    std::string text;
};

std::vector<Source> sources() {
    std::vector<Source> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sourceRoot)) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp" && extension != ".mm") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        found.push_back({std::filesystem::relative(entry.path(), sourceRoot).generic_string(),
                         {std::istreambuf_iterator<char>(file), {}}});
    }
    return found;
}

TEST(IncludeArrows, PointTheRightWayInEverySource) {
    size_t seen = 0;
    for (const auto& source : sources())
        for (const auto& include : includesOf(source.name, source.text)) {
            EXPECT_EQ(faultOf(include), "");
            ++seen;
        }
    EXPECT_GT(seen, 100u);
}

// g++ 12 destroys what braces or a lambda make inside a waiting statement twice.
TEST(WaitingStatements, MakeNoTemporaryInBraces) {
    for (const auto& source : sources())
        for (const auto& fault : awaitFaultsOf(source.name, source.text))
            ADD_FAILURE() << fault;
}

// The checks below are of the checker.

bool mayInclude(const std::string& file, const std::string& line) {
    const auto includes = includesOf(file, line);
    EXPECT_EQ(includes.size(), 1u) << line;
    return includes.size() == 1 && faultOf(includes[0]).empty();
}

TEST(IncludeChecker, ReadsIncludeLinesInEveryForm) {
    const auto found = includesOf("base/a.cpp", "#include \"base/a.h\"\n\n  #  include <string> // why\n#import "
                                                "<x.h>\nint include;\n#if 1\n// #include <no.h>\n#include MACRO");
    ASSERT_EQ(found.size(), 4u);
    EXPECT_EQ(found[0].target, "base/a.h");
    EXPECT_FALSE(found[0].isSystem);
    EXPECT_EQ(found[1].target, "string");
    EXPECT_EQ(found[1].line, 3);
    EXPECT_TRUE(found[1].isSystem);
    EXPECT_EQ(found[2].target, "x.h");
    EXPECT_EQ(found[3].target, "MACRO");
    EXPECT_NE(faultOf(found[3]), "");
}

TEST(IncludeChecker, CatchesArrowsThatPointTheWrongWay) {
    EXPECT_TRUE(mayInclude("base/a.h", "#include \"base/b.h\""));
    EXPECT_FALSE(mayInclude("base/a.h", "#include \"platform/clock.h\""));
    EXPECT_TRUE(mayInclude("platform/a.h", "#include \"base/task.h\""));
    EXPECT_FALSE(mayInclude("platform/a.h", "#include \"policy/a.h\""));
    EXPECT_TRUE(mayInclude("policy/a.h", "#include \"platform/user_defaults.h\""));
    EXPECT_FALSE(mayInclude("policy/a.h", "#include \"bridges/files/a.h\""));
    EXPECT_FALSE(mayInclude("policy/a.h", "#include \"server/a.h\""));
    EXPECT_TRUE(mayInclude("server/a.h", "#include \"bridges/files/a.h\""));
    EXPECT_FALSE(mayInclude("server/a.h", "#include \"adapters/posix/a.h\""));
    EXPECT_FALSE(mayInclude("server/a.h", "#include \"app/a.h\""));
    EXPECT_TRUE(mayInclude("adapters/libreoffice/helper/a.cpp", "#include <com/sun/star/uno/Any.hxx>"));
    EXPECT_FALSE(mayInclude("adapters/libreoffice/a.cpp", "#include <com/sun/star/uno/Any.hxx>"));
    EXPECT_TRUE(mayInclude("adapters/libreoffice/helper/a.cpp", "#include \"adapters/libreoffice/a.h\""));
    EXPECT_TRUE(mayInclude("app/main.cpp", "#include \"adapters/posix/a.h\""));
    EXPECT_TRUE(mayInclude("app/dashboard/a.cpp", "#include \"server/a.h\""));
}

TEST(IncludeChecker, KeepsBridgesAndAdaptersApart) {
    EXPECT_TRUE(mayInclude("bridges/files/a.h", "#include \"bridges/files/b.h\""));
    EXPECT_TRUE(mayInclude("bridges/files/a.h", "#include \"bridges/common/results.h\""));
    EXPECT_FALSE(mayInclude("bridges/files/a.h", "#include \"bridges/calendar/a.h\""));
    EXPECT_FALSE(mayInclude("bridges/common/a.h", "#include \"bridges/files/a.h\""));
    EXPECT_FALSE(mayInclude("bridges/files/a.h", "#include \"adapters/posix/a.h\""));
    EXPECT_FALSE(mayInclude("bridges/files/a.h", "#include \"server/a.h\""));
    EXPECT_TRUE(mayInclude("adapters/gio/a.h", "#include \"adapters/xdg/a.h\""));
    EXPECT_FALSE(mayInclude("adapters/xdg/a.h", "#include \"adapters/gio/a.h\""));
    EXPECT_FALSE(mayInclude("adapters/posix/a.h", "#include \"bridges/files/a.h\""));
    EXPECT_FALSE(mayInclude("adapters/posix/a.h", "#include \"policy/a.h\""));
    EXPECT_FALSE(mayInclude("adapters/posix/a.h", "#include \"adapters/posixly/a.h\""));
}

TEST(IncludeChecker, KeepsOutsideSystemsInTheirAdapters) {
    EXPECT_TRUE(mayInclude("adapters/glib/a.cpp", "#include <glib.h>"));
    EXPECT_FALSE(mayInclude("adapters/posix/a.cpp", "#include <glib.h>"));
    EXPECT_FALSE(mayInclude("adapters/glib/a.cpp", "#include <curl/curl.h>"));
    EXPECT_FALSE(mayInclude("app/main.cpp", "#include <curl/curl.h>"));
    EXPECT_TRUE(mayInclude("app/dashboard/a.cpp", "#include <QGuiApplication>"));
    EXPECT_TRUE(mayInclude("server/a.cpp", "#include <uv.h>"));
    EXPECT_FALSE(mayInclude("server/a.cpp", "#include <simdjson.h>"));
    EXPECT_FALSE(mayInclude("bridges/music/a.cpp", "#include <unistd.h>"));
    EXPECT_TRUE(mayInclude("bridges/files/a.cpp", "#include <unistd.h>"));
    EXPECT_FALSE(mayInclude("bridges/files/a.cpp", "#include <uv.h>"));
    for (const char* header : {"glib.h", "gio/gio.h", "QString", "dbus/dbus.h", "uv.h", "curl/curl.h", "sqlite3.h",
                               "libsecret/secret.h", "unistd.h", "some/other.h", "EventKit/EventKit.h"})
        EXPECT_FALSE(mayInclude("platform/a.h", "#include <" + std::string(header) + ">")) << header;
    for (const char* header : {"optional", "cstdint", "string_view", "map"})
        EXPECT_TRUE(mayInclude("platform/a.h", "#include <" + std::string(header) + ">")) << header;
}

TEST(IncludeChecker, RefusesPathsThatEvadeTheRooms) {
    EXPECT_FALSE(mayInclude("base/a.h", "#include \"b.h\""));
    EXPECT_FALSE(mayInclude("base/a.h", "#include \"../app/b.h\""));
    EXPECT_FALSE(mayInclude("base/a.h", "#include \"tests/base/b.h\""));
    EXPECT_FALSE(mayInclude("base/a.h", "#include <platform/clock.h>"));
    EXPECT_FALSE(mayInclude("newroom/a.h", "#include <string>"));
    EXPECT_FALSE(mayInclude("a.h", "#include <string>"));
}

TEST(WaitingStatementChecker, FindsTemporariesInBraces) {
    const auto faults = [](std::string_view text) { return awaitFaultsOf("a.cpp", text).size(); };
    EXPECT_EQ(faults("const auto a = co_await store.read({service, account});"), 1u);
    EXPECT_EQ(faults("co_await offload(loop, worker,\n    [x] { return f(x); });"), 1u);
    EXPECT_EQ(faults("co_await send(Request{});\nco_await send(Request{});"), 2u);
    EXPECT_EQ(faults("auto call = offload(loop, worker, [x] { return f(x); });\nco_await call;"), 0u);
    EXPECT_EQ(faults("if (co_await f(g(x))) {\n}"), 0u);
    EXPECT_EQ(faults("// co_await f({});\nauto operator co_await() && noexcept {"), 0u);
}

} // namespace
} // namespace bridge::architecture
