#include "adapters/curl/curl_library.h"

#include "base/platform_error.h"

namespace bridge {

namespace {

CurlLibrary loaded() {
    CurlLibrary library;
    const auto code = library.globalInit(CURL_GLOBAL_DEFAULT);
    if (code != CURLE_OK) throw PlatformError(library.easyStrerror(code));
    return library;
}

} // namespace

const CurlLibrary& curl() {
    static const CurlLibrary library = loaded();
    return library;
}

} // namespace bridge
