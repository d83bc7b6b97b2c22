#include "adapters/curl/curl_http_client.h"

#include "tests/contracts/http_client_contract.h"

namespace bridge {
namespace {

const HTTPClientKind curl{"Curl", [](EventLoop& loop) { return std::make_unique<CurlHTTPClient>(loop); }};

INSTANTIATE_TEST_SUITE_P(Adapters, HTTPClientContract, testing::Values(curl), nameOf);

} // namespace
} // namespace bridge
