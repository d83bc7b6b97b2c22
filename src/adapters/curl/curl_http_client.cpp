#include "adapters/curl/curl_http_client.h"

#include "adapters/curl/curl_exchange.h"
#include "base/offload.h"

namespace bridge {

namespace {

// Lives in the waiting task's frame: when the task is dropped, the exchange ends with it.
class CancelAtEnd {
public:
    explicit CancelAtEnd(CurlExchange& exchange) : m_exchange(exchange) {}
    CancelAtEnd(const CancelAtEnd&) = delete;
    CancelAtEnd& operator=(const CancelAtEnd&) = delete;
    ~CancelAtEnd() { m_exchange.cancel(); }

private:
    CurlExchange& m_exchange;
};

} // namespace

CurlHTTPClient::CurlHTTPClient(EventLoop& loop, std::string authorities)
    : m_loop(loop), m_authorities(std::move(authorities)) {}

Task<HTTPResponse> CurlHTTPClient::send(HTTPRequest request) {
    const auto exchange = std::make_shared<CurlExchange>(std::move(request), m_authorities);
    const CancelAtEnd cancelAtEnd(*exchange);
    auto job = offload(m_loop, m_worker, [exchange] { return exchange->perform(); });
    auto response = co_await job;
    co_return response;
}

} // namespace bridge
