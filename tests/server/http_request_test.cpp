#include "server/http_request.h"

#include "tests/support/public_data.h"

namespace bridge {
namespace {

using State = HTTPRequestReader::State;

struct Reading {
    State state;
    ParsedHTTPRequest request;
    bool exact = false;
};

Reading read(std::string_view bytes) {
    HTTPRequestReader reader;
    const auto state = reader.add(bytes);
    if (state != State::complete) return {state, {}, false};
    const bool exact = reader.endsExactly();
    return {state, reader.take(), exact};
}

TEST(HTTPRequestReader, ReadsMethodPathHeadersAndBody) {
    const auto [state, request, exact] =
        read("POST /v1/execute?x=1 HTTP/1.1\r\nHost: a\r\nX-Two: \t b c \t\r\nContent-Length: 5\r\n\r\nhello");
    ASSERT_EQ(state, State::complete);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/v1/execute?x=1");
    EXPECT_EQ(request.header("host"), "a");
    EXPECT_EQ(request.header("x-two"), "b c");
    EXPECT_EQ(request.header("absent"), std::nullopt);
    EXPECT_EQ(request.body, "hello");
    EXPECT_TRUE(exact);
}

TEST(HTTPRequestReader, VersionMayBeAnythingOrMissing) {
    EXPECT_EQ(read("GET /health\r\n\r\n").request.path, "/health");
    EXPECT_EQ(read("GET   /health   HTTP/9.9 and more\r\n\r\n").request.path, "/health");
    EXPECT_EQ(read("   get /x\r\n\r\n").request.method, "get");
}

TEST(HTTPRequestReader, RequestLineOfOneWordNeverCompletes) {
    EXPECT_EQ(read("GET\r\n\r\n").state, State::incomplete);
    EXPECT_EQ(read("\r\n\r\n").state, State::incomplete);
    EXPECT_EQ(read("\r\nGET /health\r\n\r\n").state, State::incomplete);
}

TEST(HTTPRequestReader, HeadMustBeUTF8) {
    EXPECT_EQ(read("GET /\xff HTTP/1.1\r\n\r\n").state, State::incomplete);
    EXPECT_EQ(read("GET / HTTP/1.1\r\nX: \xc3\x28\r\n\r\n").state, State::incomplete);
    EXPECT_EQ(read("GET /é HTTP/1.1\r\n\r\n").request.path, "/é");
    EXPECT_EQ(read("POST / HTTP/1.1\r\nContent-Length: 2\r\n\r\n\xff\xfe").request.body, "\xff\xfe");
}

TEST(HTTPRequestReader, HeaderWithoutNameOrValueIsIgnored) {
    const auto request =
        read("GET / HTTP/1.1\r\nno colon\r\n:value\r\nname:\r\n folded\r\nblank: \r\na:b:c\r\n spaced : x\r\n\r\n")
            .request;
    EXPECT_EQ(request.headers.size(), 3u);
    EXPECT_EQ(request.header("blank"), "");
    EXPECT_EQ(request.header("a"), "b:c");
    EXPECT_EQ(request.header(" spaced "), "x");
}

TEST(HTTPRequestReader, LaterHeaderReplacesAnEarlierOne) {
    const auto request =
        read("GET / HTTP/1.1\r\nAuthorization: Bearer a\r\nAUTHORIZATION: Bearer b\r\nauthorization:\r\n\r\n").request;
    EXPECT_EQ(request.header("authorization"), "Bearer b");
}

TEST(HTTPRequestReader, ContentLengthIsAPlainDecimalOrNothing) {
    const auto bodyFor = [](const std::string& value) {
        return read("POST / HTTP/1.1\r\ncONTENT-lENGTH: " + value + "\r\n\r\nabcdef").request.body;
    };
    EXPECT_EQ(bodyFor("3"), "abc");
    EXPECT_EQ(bodyFor("+3"), "abc");
    EXPECT_EQ(bodyFor("003"), "abc");
    EXPECT_EQ(bodyFor(" \t3\t "), "abc");
    for (const auto none : {"",
                            "0",
                            "-0",
                            "abc",
                            "3x",
                            "x3",
                            "0x3",
                            "3 3",
                            "3,3",
                            "3.0",
                            "1e0",
                            "+-3",
                            "-+3",
                            "--3",
                            "++3",
                            "+",
                            "-",
                            "9223372036854775808",
                            "99999999999999999999999",
                            "٣"})
        EXPECT_EQ(bodyFor(none), "") << none;
}

TEST(HTTPRequestReader, NegativeContentLengthNeverCompletes) {
    EXPECT_EQ(read("POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\nabc").state, State::incomplete);
    EXPECT_EQ(read("POST / HTTP/1.1\r\nContent-Length: -9223372036854775808\r\n\r\n").state, State::incomplete);
}

TEST(HTTPRequestReader, BytesBehindTheBodyAreIgnored) {
    const auto [state, request, exact] =
        read("POST / HTTP/1.1\r\nContent-Length: 2\r\n\r\nabGET /second HTTP/1.1\r\n\r\n");
    EXPECT_EQ(request.body, "ab");
    EXPECT_FALSE(exact);
}

TEST(HTTPRequestReader, KnowsWhenAPeerMayStillBeSending) {
    EXPECT_TRUE(read("GET / HTTP/1.1\r\n\r\n").exact);
    EXPECT_TRUE(read("POST / HTTP/1.1\r\nContent-Length: 1\r\n\r\na").exact);
    EXPECT_FALSE(read("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n").exact);
    EXPECT_FALSE(read("GET / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n").exact);
    EXPECT_FALSE(read("POST / HTTP/1.1\r\nContent-Length: many\r\n\r\n").exact);
    EXPECT_FALSE(read("GET / HTTP/1.1\r\n\r\nx").exact);
}

TEST(HTTPRequestReader, EveryWayOfCuttingGivesTheSameRequest) {
    const std::string bytes = "POST /v1/execute HTTP/1.1\r\nContent-Length: 7\r\nA: b\r\n\r\n{\r\n\r\n }";
    for (size_t first = 0; first <= bytes.size(); ++first) {
        HTTPRequestReader reader;
        const auto early = reader.add(bytes.substr(0, first));
        EXPECT_EQ(early, first == bytes.size() ? State::complete : State::incomplete) << first;
        EXPECT_TRUE(early == State::complete || reader.add(bytes.substr(first)) == State::complete) << first;
        EXPECT_EQ(reader.take().body, "{\r\n\r\n }") << first;
    }
    HTTPRequestReader reader;
    State state = State::incomplete;
    for (const char byte : bytes)
        state = reader.add({&byte, 1});
    EXPECT_EQ(state, State::complete);
    EXPECT_EQ(reader.take().header("a"), "b");
}

TEST(HTTPRequestReader, LimitCountsHeadAndBodyTogether) {
    const std::string head = "POST / HTTP/1.1\r\nContent-Length: 1048529\r\n\r\n";
    const std::string whole = head + std::string(HTTPRequestReader::maximumRequestBytes - head.size(), 'a');
    ASSERT_EQ(whole.size(), 1'048'576u);
    EXPECT_EQ(read(whole).state, State::complete);
    EXPECT_EQ(read(whole).request.body.size(), 1'048'529u);
    EXPECT_EQ(read(whole + "a").state, State::tooLarge);
    EXPECT_EQ(read(std::string(1'048'576, 'a')).state, State::incomplete);
    EXPECT_EQ(read(std::string(1'048'577, 'a')).state, State::tooLarge);
}

TEST(HTTPRequestReader, MalformedRequestCountsButKeepsNoMemory) {
    HTTPRequestReader reader;
    EXPECT_EQ(reader.add("BAD\r\n\r\n"), State::incomplete);
    EXPECT_EQ(reader.add(std::string(1'048'569, 'x')), State::incomplete);
    EXPECT_EQ(reader.buffered(), 0u);
    EXPECT_EQ(reader.add("x"), State::tooLarge);
}

// Files as their project publishes them: \r\n is written out, line ends of the file itself are not part of the data.
std::string requestBytes(const std::string& file) {
    std::string bytes;
    for (size_t index = 0; index < file.size(); ++index) {
        if (file[index] == '\n' || file[index] == '\r') continue;
        if (file[index] == '\\' && index + 1 < file.size()) {
            const char next = file[index + 1];
            const char meant = next == 'r' ? '\r' : next == 'n' ? '\n' : next == 't' ? '\t' : next == '0' ? '\0' : '\\';
            if (next == 'r' || next == 'n' || next == 't' || next == '0') {
                bytes += meant;
                ++index;
                continue;
            }
        }
        bytes += file[index];
    }
    return bytes;
}

// Our framing rules once more, in the plainest words, to compare with.
std::optional<ParsedHTTPRequest> framedByTheRules(const std::string& bytes) {
    const auto end = bytes.find("\r\n\r\n");
    if (end == std::string::npos) return std::nullopt;
    std::vector<std::string> lines(1);
    for (size_t index = 0; index < end; ++index) {
        if (bytes.compare(index, 2, "\r\n") == 0) {
            lines.emplace_back();
            ++index;
        } else {
            lines.back() += bytes[index];
        }
    }
    ParsedHTTPRequest request;
    std::vector<std::string> words(1);
    for (const char character : lines[0]) {
        if (character == ' ')
            words.emplace_back();
        else
            words.back() += character;
    }
    std::erase(words, "");
    if (words.size() < 2) return std::nullopt;
    request.method = words[0];
    request.path = words[1];
    for (size_t index = 1; index < lines.size(); ++index) {
        const auto colon = lines[index].find(':');
        if (colon == std::string::npos || colon == 0 || colon + 1 == lines[index].size()) continue;
        auto name = lines[index].substr(0, colon);
        for (char& character : name)
            character = static_cast<char>(character >= 'A' && character <= 'Z' ? character + 32 : character);
        auto value = lines[index].substr(colon + 1);
        while (!value.empty() && (value.front() == ' ' || value.front() == '\t'))
            value.erase(0, 1);
        while (!value.empty() && (value.back() == ' ' || value.back() == '\t'))
            value.pop_back();
        request.headers[name] = value;
    }
    long long length = 0;
    const auto header = request.headers.find("content-length");
    if (header != request.headers.end()) {
        const auto& text = header->second;
        const size_t digits = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
        if (text.size() > digits && text.size() < 18 &&
            text.find_first_not_of("0123456789", digits) == std::string::npos)
            length = std::stoll(text);
    }
    if (length < 0 || bytes.size() - end - 4 < static_cast<size_t>(length)) return std::nullopt;
    request.body = bytes.substr(end + 4, static_cast<size_t>(length));
    return request;
}

TEST(PublicHTTPRequests, AreFramedAsTheRulesSay) {
    REQUIRE_PUBLIC_DATA("http/gunicorn");
    size_t seen = 0, complete = 0;
    for (const auto& entry : std::filesystem::directory_iterator(publicData("http/gunicorn"))) {
        if (entry.path().extension() != ".http") continue;
        const auto bytes = requestBytes(readFile(entry.path()));
        const auto expected = framedByTheRules(bytes);
        const auto [state, request, exact] = read(bytes);
        EXPECT_EQ(state == State::complete, expected.has_value()) << entry.path().filename();
        if (expected && state == State::complete) {
            EXPECT_EQ(request.method, expected->method) << entry.path().filename();
            EXPECT_EQ(request.path, expected->path) << entry.path().filename();
            EXPECT_EQ(request.headers, expected->headers) << entry.path().filename();
            EXPECT_EQ(request.body, expected->body) << entry.path().filename();
            ++complete;
        }
        ++seen;
    }
    EXPECT_GT(seen, 100u);
    EXPECT_GT(complete, 50u);
}

} // namespace
} // namespace bridge
