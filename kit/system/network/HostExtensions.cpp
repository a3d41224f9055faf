// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/HostExtensions.h"

#include "DozelyKit/system/network/PrimaryInterface.h"

using namespace dozely;

QString zandorSoftwaresExtensions::primaryMACAddress()
{
    constexpr qsizetype size = 6;
    QString text;
    for (const QByteArray &address : Port<PrimaryInterface>::current()->hardwareAddresses()) {
        if (address.size() >= size)
            text = QString::fromLatin1(address.first(size).toHex(':'));
    }
    return text;
}
