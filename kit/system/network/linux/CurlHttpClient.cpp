// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include "DozelyKit/system/network/linux/CurlExchange_p.h"

std::optional<QByteArray> CurlHttpClient::send(const HttpRequest &request, QString *error)
{
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (ready != CURLE_OK) {
        if (error)
            *error = "the transport cannot be used";
        return std::nullopt;
    }
    return CurlExchange(request, m_options).perform(error);
}
