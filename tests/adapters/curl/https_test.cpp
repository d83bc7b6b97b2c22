#include "adapters/curl/curl_http_client.h"
#include "base/platform_error.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A real server, with a certificate that it has given itself.
class HTTPS : public testing::Test {
protected:
    HTTPS() {
        putFile(folder / "page", "HTTP/1.0 200 OK\r\n\r\nbehind the lock");
        ChildProcess maker({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                            "-nodes", "-keyout", key, "-out", certificate, "-subj", "/CN=localhost", "-addext",
                            "subjectAltName=DNS:localhost"},
                           {}, "");
        while (!maker.readLine().empty()) {
        }
        server =
            std::make_unique<ChildProcess>(std::vector<std::string>{"sh", "-c",
                                                                    "cd '" + folder.path().string() +
                                                                        "' && exec openssl s_server -accept "
                                                                        "127.0.0.1:0 -cert certificate -key key -HTTP"},
                                           std::map<std::string, std::string>{}, "");
        // "ACCEPT 127.0.0.1:37715"
        std::string line = server->readLine();
        while (!line.empty() && !line.starts_with("ACCEPT"))
            line = server->readLine();
        port = line.substr(line.rfind(':') + 1);
    }

    // What came back, or why nothing did.
    std::string fetch(const std::string& host, const std::string& authorities) {
        CurlHTTPClient client(loop, authorities);
        HTTPRequest request{"GET", "https://" + host + ":" + port + "/page", {}, "", std::chrono::minutes(1)};
        try {
            return loop.runUntilDone(client.send(std::move(request))).body;
        } catch (const PlatformError& error) {
            return std::string("failed: ") + error.what();
        }
    }

    TemporaryFolder folder;
    std::string key = folder.file("key");
    std::string certificate = folder.file("certificate");
    std::unique_ptr<ChildProcess> server;
    std::string port;
    EventLoop loop;
};

TEST_F(HTTPS, AServerThatIsVouchedForAnswers) {
    EXPECT_EQ(fetch("localhost", certificate), "behind the lock");
}

TEST_F(HTTPS, AServerThatNobodyVouchesForGetsNoRequest) {
    EXPECT_THAT(fetch("localhost", ""), AllOf(StartsWith("failed: "), HasSubstr("certificate")));
}

TEST_F(HTTPS, ACertificateForAnotherHostIsNoGood) {
    EXPECT_THAT(fetch("127.0.0.1", certificate), AllOf(StartsWith("failed: "), HasSubstr("127.0.0.1")));
}

TEST_F(HTTPS, AuthoritiesThatAreNotThereAreAnError) {
    EXPECT_THAT(fetch("localhost", folder.file("nothing")), StartsWith("failed: "));
}

} // namespace
} // namespace bridge
