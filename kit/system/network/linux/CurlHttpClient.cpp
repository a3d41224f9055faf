// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include "DozelyKit/system/network/linux/CurlExchange_p.h"

namespace dozely
{

Result<QByteArray> CurlHttpClient::send(const HttpRequest &request)
{
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (ready != CURLE_OK)
        return Error{"the transport cannot be used"};
    return CurlExchange(request, m_options).perform();
}

} // namespace dozely
