#pragma once

#include "base/shared_library.h"

#include <curl/curl.h>

namespace bridge {

// What of libcurl is used. It brings protocols that nobody here speaks and two libraries of cryptography, some 7 MB,
// and many a bridge never sends a request; so it is loaded for the first one.
struct CurlLibrary {
    // By the version of its interface, which it has had since 2006.
    SharedLibrary file{"libcurl.so.4"};
    decltype(&curl_easy_cleanup) easyCleanup = file["curl_easy_cleanup"];
    decltype(&curl_easy_getinfo) easyGetinfo = file["curl_easy_getinfo"];
    decltype(&curl_easy_init) easyInit = file["curl_easy_init"];
    decltype(&curl_easy_setopt) easySetopt = file["curl_easy_setopt"];
    decltype(&curl_easy_strerror) easyStrerror = file["curl_easy_strerror"];
    decltype(&curl_global_init) globalInit = file["curl_global_init"];
    decltype(&curl_multi_add_handle) multiAddHandle = file["curl_multi_add_handle"];
    decltype(&curl_multi_cleanup) multiCleanup = file["curl_multi_cleanup"];
    decltype(&curl_multi_info_read) multiInfoRead = file["curl_multi_info_read"];
    decltype(&curl_multi_init) multiInit = file["curl_multi_init"];
    decltype(&curl_multi_perform) multiPerform = file["curl_multi_perform"];
    decltype(&curl_multi_poll) multiPoll = file["curl_multi_poll"];
    decltype(&curl_multi_remove_handle) multiRemoveHandle = file["curl_multi_remove_handle"];
    decltype(&curl_multi_wakeup) multiWakeup = file["curl_multi_wakeup"];
    decltype(&curl_slist_append) slistAppend = file["curl_slist_append"];
    decltype(&curl_slist_free_all) slistFreeAll = file["curl_slist_free_all"];
    decltype(&curl_strnequal) strnequal = file["curl_strnequal"];
};

// Loads and initialises it with the first call. Any thread. Throws PlatformError when that fails, and tries again with
// the next call.
const CurlLibrary& curl();

} // namespace bridge
