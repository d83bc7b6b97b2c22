#pragma once

#include "platform/http_client.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace bridge {

// One request and its answer. Made on the main thread, performed on the worker, cancelled from the main thread.
class CurlExchange {
public:
    // `authorities` is a file of certificates to trust instead of the system's; empty for those.
    CurlExchange(HTTPRequest request, std::string authorities);
    ~CurlExchange();
    CurlExchange(const CurlExchange&) = delete;
    CurlExchange& operator=(const CurlExchange&) = delete;

    // Blocks until the answer is whole, the time is over or cancel() is called. Throws PlatformError. Once only.
    HTTPResponse perform();

    // Any thread, at any time; a cancelled exchange ends at once with an error.
    void cancel();

private:
    struct Handles;

    void setUp();
    void setUpTrust();
    void setUpBody();
    void setUpHeaders();
    int run();
    static size_t receiveHeader(char* bytes, size_t size, size_t count, void* self);
    static size_t receiveBody(char* bytes, size_t size, size_t count, void* self);
    bool account(size_t bytes);

    HTTPRequest m_request;
    std::string m_authorities;
    std::mutex m_making; // of the handles, which perform() does and cancel() looks at
    std::unique_ptr<Handles> m_handles;
    std::atomic<bool> m_cancelled = false;
    HTTPResponse m_response;
    size_t m_received = 0;
};

} // namespace bridge
