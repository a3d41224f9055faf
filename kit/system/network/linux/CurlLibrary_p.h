// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

namespace dozely
{

/// libcurl, opened by the first request: with it come some thirty other libraries, and most processes never
/// ask anything of a server. Its functions have their own names here, without "curl_".
struct CurlLibrary {
    /// The library, made ready; null where the machine has none that can be used. THREADING: any thread.
    static const CurlLibrary *open();

    decltype(&curl_global_init) global_init = nullptr;
    decltype(&curl_easy_init) easy_init = nullptr;
    decltype(&curl_easy_setopt) easy_setopt = nullptr;
    decltype(&curl_easy_strerror) easy_strerror = nullptr;
    decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
    decltype(&curl_multi_init) multi_init = nullptr;
    decltype(&curl_multi_add_handle) multi_add_handle = nullptr;
    decltype(&curl_multi_remove_handle) multi_remove_handle = nullptr;
    decltype(&curl_multi_perform) multi_perform = nullptr;
    decltype(&curl_multi_poll) multi_poll = nullptr;
    decltype(&curl_multi_info_read) multi_info_read = nullptr;
    decltype(&curl_multi_cleanup) multi_cleanup = nullptr;
    decltype(&curl_slist_append) slist_append = nullptr;
    decltype(&curl_slist_free_all) slist_free_all = nullptr;

private:
    bool find();
};

} // namespace dozely
