// SPDX-License-Identifier: MIT
#include "system/HostExtensions.h"

#include "platform/Platform.h"
#include "platform/PrimaryInterface.h"

QString zandorSoftwaresExtensions::primaryMACAddress()
{
    constexpr qsizetype size = 6;
    QString text;
    for (const QByteArray &address : Platform::current().primaryInterface->hardwareAddresses()) {
        if (address.size() >= size)
            text = QString::fromLatin1(address.first(size).toHex(':'));
    }
    return text;
}
