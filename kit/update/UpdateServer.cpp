// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateServer.h"

namespace dozely
{

bool UpdateServer::isAsked()
{
    return DOZELY_UPDATE_CHECK != 0;
}

QString UpdateServer::host()
{
    return DOZELY_UPDATE_HOST;
}

QUrl UpdateServer::address()
{
    return QUrl("https://" + host() + "/latest.php");
}

} // namespace dozely
