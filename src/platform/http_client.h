#pragma once

#include "base/task.h"

#include <chrono>
#include <map>
#include <string>

namespace bridge {

struct HTTPRequest {
    std::string method;
    std::string url; // absolute, http or https
    std::map<std::string, std::string> headers;
    std::string body;
    std::chrono::milliseconds timeout; // for the whole exchange
};

struct HTTPResponse {
    int status = 0;
    std::string body;
};

// Sends one request and brings the whole answer, whatever its status. It never follows a redirect (the redirect is the
// answer), uses no proxy, keeps no cookies and gives no credentials of its own. An answer of more than 1 MiB is an
// error. Over https it speaks only to a server whose certificate is good and is for that host. Throws PlatformError
// with the client library's description when there is no answer: refused, timed out, not trusted, not HTTP. Called on
// the main thread; a dropped task abandons the exchange.
class HTTPClient {
public:
    virtual ~HTTPClient() = default;
    virtual Task<HTTPResponse> send(HTTPRequest request) = 0;
};

} // namespace bridge
