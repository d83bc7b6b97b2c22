#pragma once

#include "base/event_loop.h"
#include "base/worker.h"
#include "platform/http_client.h"

namespace bridge {

// libcurl, on a thread of its own: one exchange at a time, each on a new connection. `localhost` is this machine
// without asking any name service. Requests with a line break in a header, or for anything but http and https, are
// refused.
class CurlHTTPClient : public HTTPClient {
public:
    // `loop` must outlive the client, and the client its tasks. Destroying it waits for no exchange. `authorities` is a
    // file of certificates that https servers may be vouched for by, instead of those that the system trusts.
    explicit CurlHTTPClient(EventLoop& loop, std::string authorities = {});

    Task<HTTPResponse> send(HTTPRequest request) override;

private:
    EventLoop& m_loop;
    std::string m_authorities;
    Worker m_worker;
};

} // namespace bridge
