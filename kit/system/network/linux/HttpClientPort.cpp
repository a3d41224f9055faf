// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/HttpClient.h"

#if DOZELY_UPDATE_CHECK
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"
#endif

namespace dozely
{

template<>
std::shared_ptr<HttpClient> &Port<HttpClient>::current()
{
#if DOZELY_UPDATE_CHECK
    static auto *const port = new std::shared_ptr<HttpClient>(std::make_shared<CurlHttpClient>());
#else
    static auto *const port = new std::shared_ptr<HttpClient>();
#endif
    return *port;
}

} // namespace dozely
