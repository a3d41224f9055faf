// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlLibrary_p.h"

#include "DozelyKit/core/foundation/linux/MachineLibrary_p.h"

namespace dozely
{

bool CurlLibrary::find()
{
    const MachineLibrary library("libcurl.so.4");
    return library.find(global_init, "curl_global_init") && library.find(easy_init, "curl_easy_init") &&
           library.find(easy_setopt, "curl_easy_setopt") &&
           library.find(easy_strerror, "curl_easy_strerror") &&
           library.find(easy_cleanup, "curl_easy_cleanup") && library.find(multi_init, "curl_multi_init") &&
           library.find(multi_add_handle, "curl_multi_add_handle") &&
           library.find(multi_remove_handle, "curl_multi_remove_handle") &&
           library.find(multi_perform, "curl_multi_perform") && library.find(multi_poll, "curl_multi_poll") &&
           library.find(multi_info_read, "curl_multi_info_read") &&
           library.find(multi_cleanup, "curl_multi_cleanup") &&
           library.find(slist_append, "curl_slist_append") &&
           library.find(slist_free_all, "curl_slist_free_all");
}

const CurlLibrary *CurlLibrary::open()
{
    static const CurlLibrary *const opened = []() -> const CurlLibrary * {
        static CurlLibrary library;
        return library.find() && library.global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK ? &library : nullptr;
    }();
    return opened;
}

} // namespace dozely
