#include "adapters/curl/curl_exchange.h"

#include "adapters/curl/curl_library.h"
#include "base/platform_error.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

constexpr size_t maximumAnswer = 1024 * 1024;

// An answer within the limit may come with this much of head; libcurl itself sets no limit to it.
constexpr size_t maximumHead = 64 * 1024;

// How long libcurl waits at most before it looks at its clock again; sockets and cancel() wake it at once.
constexpr int pollMilliseconds = 1000;

void check(CURLcode code) {
    if (code != CURLE_OK) throw PlatformError(curl().easyStrerror(code));
}

bool equalFolded(const std::string& left, std::string_view right) {
    return left.size() == right.size() && curl().strnequal(left.data(), right.data(), right.size()) != 0;
}

bool hasLineBreak(const std::string& text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos;
}

} // namespace

struct CurlExchange::Handles {
    std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi{curl().multiInit(), curl().multiCleanup};
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy{curl().easyInit(), curl().easyCleanup};
    std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers{nullptr, curl().slistFreeAll};
    std::array<char, CURL_ERROR_SIZE> description{};

    Handles() {
        if (!multi || !easy) throw PlatformError(curl().easyStrerror(CURLE_OUT_OF_MEMORY));
    }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
    ~Handles() { curl().multiRemoveHandle(multi.get(), easy.get()); }

    template <typename Value> void set(CURLoption option, Value value) {
        check(curl().easySetopt(easy.get(), option, value));
    }

    void addHeader(const std::string& line) {
        auto* longer = curl().slistAppend(headers.get(), line.c_str());
        if (!longer) throw PlatformError(curl().easyStrerror(CURLE_OUT_OF_MEMORY));
        static_cast<void>(headers.release());
        headers.reset(longer);
    }
};

CurlExchange::CurlExchange(HTTPRequest request, std::string authorities)
    : m_request(std::move(request)), m_authorities(std::move(authorities)) {}

CurlExchange::~CurlExchange() = default;

void CurlExchange::cancel() {
    m_cancelled = true;
    const std::scoped_lock lock(m_making);
    if (m_handles) curl().multiWakeup(m_handles->multi.get());
}

HTTPResponse CurlExchange::perform() {
    // Here, since the first takes as long as it takes to load the library.
    auto handles = std::make_unique<Handles>();
    {
        const std::scoped_lock lock(m_making);
        m_handles = std::move(handles);
    }
    setUp();
    const auto code = static_cast<CURLcode>(run());
    if (m_received > maximumAnswer + maximumHead || m_response.body.size() > maximumAnswer)
        throw PlatformError("The answer is too large.");
    if (code != CURLE_OK) {
        const auto* described = m_handles->description.data();
        throw PlatformError(*described != '\0' ? described : curl().easyStrerror(code));
    }
    long status = 0;
    check(curl().easyGetinfo(m_handles->easy.get(), CURLINFO_RESPONSE_CODE, &status));
    m_response.status = static_cast<int>(status);
    return std::move(m_response);
}

void CurlExchange::setUp() {
    if (hasLineBreak(m_request.method) || hasLineBreak(m_request.url))
        throw PlatformError("The request has a line break in its first line.");
    auto& handles = *m_handles;
    handles.set(CURLOPT_ERRORBUFFER, handles.description.data());
    handles.set(CURLOPT_URL, m_request.url.c_str());
    handles.set(CURLOPT_PROTOCOLS_STR, "http,https");
    setUpTrust();
    handles.set(CURLOPT_FOLLOWLOCATION, 0L);
    // Both, so that neither the environment nor a default can name a proxy.
    handles.set(CURLOPT_PROXY, "");
    handles.set(CURLOPT_NOPROXY, "*");
    handles.set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    handles.set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    handles.set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    handles.set(CURLOPT_NOSIGNAL, 1L);
    // For libcurl 0 is no limit at all.
    handles.set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<int64_t>(1, m_request.timeout.count())));
    handles.set(CURLOPT_WRITEFUNCTION, &CurlExchange::receiveBody);
    handles.set(CURLOPT_WRITEDATA, this);
    handles.set(CURLOPT_HEADERFUNCTION, &CurlExchange::receiveHeader);
    handles.set(CURLOPT_HEADERDATA, this);
    setUpBody();
    setUpHeaders();
}

void CurlExchange::setUpTrust() {
    auto& handles = *m_handles;
    handles.set(CURLOPT_SSL_VERIFYPEER, 1L);
    // 2 is libcurl's way to say that the name counts as well.
    handles.set(CURLOPT_SSL_VERIFYHOST, 2L);
    handles.set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (m_authorities.empty()) return;
    handles.set(CURLOPT_CAINFO, m_authorities.c_str());
    handles.set(CURLOPT_CAPATH, nullptr);
}

void CurlExchange::setUpBody() {
    auto& handles = *m_handles;
    if (m_request.method == "HEAD") {
        handles.set(CURLOPT_NOBODY, 1L);
    } else if (m_request.method != "GET" || !m_request.body.empty()) {
        handles.set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_request.body.size()));
        handles.set(CURLOPT_POSTFIELDS, m_request.body.data());
        handles.set(CURLOPT_CUSTOMREQUEST, m_request.method.c_str());
    }
}

void CurlExchange::setUpHeaders() {
    auto& handles = *m_handles;
    bool namesContentType = false;
    for (const auto& [name, value] : m_request.headers) {
        if (hasLineBreak(name) || hasLineBreak(value)) throw PlatformError("The request has a line break in a header.");
        namesContentType = namesContentType || equalFolded(name, "Content-Type");
        // libcurl's way to say a header with an empty value.
        handles.addHeader(value.empty() ? name + ";" : name + ": " + value);
    }
    // What libcurl would add by itself: a guess at the content, and a pause before a large body.
    if (!namesContentType) handles.addHeader("Content-Type:");
    handles.addHeader("Expect:");
    handles.set(CURLOPT_HTTPHEADER, handles.headers.get());
}

int CurlExchange::run() {
    auto* multi = m_handles->multi.get();
    if (curl().multiAddHandle(multi, m_handles->easy.get()) != CURLM_OK) return CURLE_FAILED_INIT;
    while (!m_cancelled) {
        int running = 0;
        if (curl().multiPerform(multi, &running) != CURLM_OK) return CURLE_FAILED_INIT;
        int left = 0;
        const CURLMsg* message = curl().multiInfoRead(multi, &left);
        if (message && message->msg == CURLMSG_DONE) return message->data.result;
        if (curl().multiPoll(multi, nullptr, 0, pollMilliseconds, nullptr) != CURLM_OK) return CURLE_FAILED_INIT;
    }
    return CURLE_ABORTED_BY_CALLBACK;
}

size_t CurlExchange::receiveHeader(char*, size_t size, size_t count, void* self) {
    return static_cast<CurlExchange*>(self)->account(size * count) ? size * count : 0;
}

size_t CurlExchange::receiveBody(char* bytes, size_t size, size_t count, void* self) {
    auto& exchange = *static_cast<CurlExchange*>(self);
    if (!exchange.account(size * count)) return 0;
    exchange.m_response.body.append(bytes, size * count);
    return exchange.m_response.body.size() <= maximumAnswer ? size * count : 0;
}

bool CurlExchange::account(size_t bytes) {
    m_received += bytes;
    return m_received <= maximumAnswer + maximumHead;
}

} // namespace bridge
