// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include "DozelyKit/system/network/linux/CurlExchange_p.h"

namespace dozely
{

Result<QByteArray> CurlHttpClient::send(const HttpRequest &request)
{
    const CurlLibrary *const curl = CurlLibrary::open();
    if (!curl)
        return Error{"the transport cannot be used"};
    return CurlExchange(*curl, request, m_options).perform();
}

} // namespace dozely
