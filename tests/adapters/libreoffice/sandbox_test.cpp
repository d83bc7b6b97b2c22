#include "tests/adapters/libreoffice/flat_documents.h"
#include "tests/adapters/libreoffice/office_test.h"
#include "tests/support/child_process.h"

#include <arpa/inet.h>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

namespace bridge::office {

namespace {

// A server of this machine that nobody is to find.
class Listener {
public:
    Listener() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_address;
        if (bind(m_socket.get(), reinterpret_cast<sockaddr*>(&m_address), size) != 0 ||
            listen(m_socket.get(), 8) != 0 ||
            getsockname(m_socket.get(), reinterpret_cast<sockaddr*>(&m_address), &size) != 0)
            throw std::runtime_error("no listener");
    }

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(ntohs(m_address.sin_port)) + path;
    }
    void call() const {
        const FileDescriptor caller(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (connect(caller.get(), reinterpret_cast<const sockaddr*>(&m_address), sizeof m_address) != 0)
            throw std::runtime_error("the listener can't be found");
    }
    bool wasFound() const {
        pollfd watched{m_socket.get(), POLLIN, 0};
        return poll(&watched, 1, 0) != 0;
    }

private:
    FileDescriptor m_socket;
    sockaddr_in m_address{};
};

// What the tests look for wherever it must not be.
const std::string secret = "secretfox";

class Sandbox : public OfficeTest {
protected:
    void SetUp() override {
        OfficeTest::SetUp();
        putFile(folder / "secret.csv", secret + "\n");
        putFile(folder / "secret.txt", secret + "\n");
    }
    std::string url(const std::string& name) const { return "file://" + folder.file(name); }
    DocumentID open(DocumentKind kind, const std::string& name, const std::string& content) {
        putFile(folder / name, content);
        return office().open(kind, folder.file(name), call);
    }
    // What a document that was saved says, and its macros.
    std::string unpacked(const std::string& name) const {
        ChildProcess unzip(
            {"sh", "-c", "unzip -p \"$0\" content.xml 'Basic/*' | tr '\\n' ' '; echo", folder.file(name)}, {}, "");
        return unzip.readLine();
    }
    std::string shownIn(DocumentID document, int32_t rows) {
        std::string all;
        for (const auto& value : office().cells(document, 0, 0, {0, 0, 0, rows - 1}, call))
            if (const auto* text = std::get_if<std::string>(&value)) all += *text + "\n";
        return all;
    }
};

} // namespace

TEST_F(Sandbox, HasNoFileOfTheSystemOrTheUserForAFormula) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0,
                      {{0, 0, "='file:///etc/passwd'#$Sheet1.A1"},
                       {0, 1, "='" + url("secret.csv") + "'#$Sheet1.A1"},
                       {0, 2, "='" + url("secret.csv") + "'#$secret.A1"},
                       {0, 3, "='file:///usr/lib/os-release'#$Sheet1.A1"}},
                      call);
    const auto shown = shownIn(document, 4);
    EXPECT_THAT(shown, testing::Not(testing::HasSubstr("root:")));
    EXPECT_THAT(shown, testing::Not(testing::HasSubstr(secret)));
    // This one is there for all, which shows that the others could have been read.
    EXPECT_THAT(shown, testing::HasSubstr("Debian"));
}

TEST_F(Sandbox, HasNoFileOfTheSystemOrTheUserForADocument) {
    const auto cell = [](const std::string& formula) {
        return "<table:table-row><table:table-cell table:formula=\"of:=" + formula +
               "\" office:value-type=\"string\"/></table:table-row>";
    };
    const auto document =
        open(DocumentKind::spreadsheet, "a.numbers",
             flatSheet(cell("'file:///etc/passwd'#$Sheet1.A1") + cell("['file:///etc/passwd'#$Sheet1.A1]") +
                       cell("['" + url("secret.csv") + "'#$Sheet1.A1]")));
    const auto shown = shownIn(document, 3);
    EXPECT_THAT(shown, testing::Not(testing::HasSubstr("root:")));
    EXPECT_THAT(shown, testing::Not(testing::HasSubstr(secret)));
    office().exportTo(document, folder.file("out.csv"), ExportFormat::csv, call);
    EXPECT_THAT(getFile(folder / "out.csv"), testing::Not(testing::HasSubstr("root:")));
    EXPECT_THAT(getFile(folder / "out.csv"), testing::Not(testing::HasSubstr(secret)));
}

TEST_F(Sandbox, HasNoNetworkForAFormula) {
    const Listener listener;
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(
        document, 0, 0,
        {{0, 0, "=WEBSERVICE(\"" + listener.url("/") + "\")"}, {0, 1, "='" + listener.url("/a.csv") + "'#$Sheet1.A1"}},
        call);
    EXPECT_THAT(shownIn(document, 2), testing::Not(testing::HasSubstr(secret)));
    office().exportTo(document, folder.file("out.pdf"), ExportFormat::pdf, call);
    EXPECT_FALSE(listener.wasFound());
    // Outside of the sandbox the server can be found.
    listener.call();
    EXPECT_TRUE(listener.wasFound());
}

TEST_F(Sandbox, FetchesNothingThatATextPointsTo) {
    const Listener listener;
    const auto picture = [](const std::string& from) {
        return "<text:p><draw:frame svg:width=\"2cm\" svg:height=\"2cm\"><draw:image xlink:href=\"" + from +
               "\" xlink:type=\"simple\" xlink:actuate=\"onLoad\"/></draw:frame></text:p>";
    };
    const auto object = [](const std::string& from) {
        return "<text:p><draw:frame svg:width=\"2cm\" svg:height=\"2cm\"><draw:object xlink:href=\"" + from +
               "\" xlink:type=\"simple\" xlink:actuate=\"onLoad\"/></draw:frame></text:p>";
    };
    const auto section = [](const std::string& name, const std::string& from) {
        return "<text:section text:name=\"" + name + "\"><text:section-source xlink:href=\"" + from +
               "\" xlink:type=\"simple\" xlink:show=\"embed\"/><text:p>before</text:p></text:section>";
    };
    const auto document =
        open(DocumentKind::text, "a.pages",
             flatDocument("text", "<text:p>Start</text:p>" + picture(listener.url("/a.png")) +
                                      picture(url("secret.txt")) + object(url("secret.txt")) +
                                      object(listener.url("/a.ods")) + section("One", url("secret.txt")) +
                                      section("Two", listener.url("/a.txt")) + section("Three", "file:///etc/passwd")));
    EXPECT_THAT(office().bodyText(document, call), testing::HasSubstr("Start"));
    EXPECT_THAT(office().bodyText(document, call), testing::Not(testing::HasSubstr(secret)));
    for (const auto format : {ExportFormat::text, ExportFormat::pdf, ExportFormat::docx, ExportFormat::epub}) {
        const auto out = folder.file("out" + std::to_string(static_cast<int>(format)));
        office().exportTo(document, out, format, call);
        EXPECT_THAT(getFile(out), testing::Not(testing::HasSubstr(secret)));
        EXPECT_THAT(getFile(out), testing::Not(testing::HasSubstr("root:")));
    }
    EXPECT_FALSE(listener.wasFound());
    if (!ChildProcess::isInstalled("unzip")) GTEST_SKIP() << "unzip is not installed";
    // LibreOffice has understood what points elsewhere: it is in what it saves.
    office().saveAs(document, folder.file("b.pages"), call);
    const auto saved = unpacked("b.pages");
    for (const auto& link : {listener.url("/a.png"), listener.url("/a.txt"), std::string("secret.txt")})
        EXPECT_THAT(saved, testing::HasSubstr(link));
}

TEST_F(Sandbox, RunsNoMacroOfADocument) {
    const std::string macro =
        "<office:scripts><office:script script:language=\"ooo:Basic\"><ooo:libraries>"
        "<ooo:library-embedded ooo:name=\"Standard\"><ooo:module ooo:name=\"M\"><ooo:source-code>\n"
        "Sub Main\nOpen &quot;/documents/ran&quot; For Output As #1\nPrint #1, &quot;ran&quot;\nClose #1\nEnd Sub\n"
        "</ooo:source-code></ooo:module></ooo:library-embedded></ooo:libraries></office:script>"
        "<office:event-listeners><script:event-listener script:language=\"ooo:script\" "
        "script:event-name=\"dom:load\" xlink:type=\"simple\" "
        "xlink:href=\"vnd.sun.star.script:Standard.M.Main?language=Basic&amp;location=document\"/>"
        "</office:event-listeners></office:scripts>";
    const auto document = open(DocumentKind::text, "a.pages", flatDocument("text", "<text:p>Hello</text:p>", macro));
    EXPECT_EQ(office().bodyText(document, call), "Hello");
    EXPECT_THAT(place.filesAtWork(), testing::Not(testing::Contains("ran")));
    if (!ChildProcess::isInstalled("unzip")) GTEST_SKIP() << "unzip is not installed";
    // LibreOffice has understood it: the macro and the event that would run it are in what it saves.
    office().saveAs(document, folder.file("b.pages"), call);
    const auto saved = unpacked("b.pages");
    EXPECT_THAT(saved, testing::HasSubstr("/documents/ran"));
    EXPECT_THAT(saved, testing::HasSubstr("Standard.M.Main"));
}

TEST_F(Sandbox, ShowsNoProcessOfTheSystem) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0,
                      {{0, 0, "='file:///proc/" + std::to_string(getpid()) + "/cmdline'#$Sheet1.A1"},
                       {0, 1, "='file:///proc/" + std::to_string(getpid()) + "/environ'#$Sheet1.A1"}},
                      call);
    EXPECT_THAT(shownIn(document, 2), testing::Not(testing::HasSubstr("libreoffice_test")));
    EXPECT_THAT(shownIn(document, 2), testing::Not(testing::HasSubstr("PATH=")));
}

} // namespace bridge::office
