// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include "DozelyKit/system/network/linux/CurlExchange_p.h"

dozely::Result<QByteArray> CurlHttpClient::send(const HttpRequest &request)
{
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (ready != CURLE_OK)
        return dozely::Error{"the transport cannot be used"};
    return CurlExchange(request, m_options).perform();
}
