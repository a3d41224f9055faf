// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NetServiceExtensions.h"

#include <QStringList>

#include <algorithm>

using namespace dozely;

namespace
{
std::optional<NetServices::Address> lastIPv4Address(const NSNetService &service)
{
    const QList<NetServices::Address> addresses = service.addresses();
    const auto found =
        std::find_if(addresses.rbegin(), addresses.rend(), [](const NetServices::Address &address) {
            constexpr qsizetype sizeOfIPv4 = 4;
            return address.family == NetServices::Address::Family::IPv4 && address.bytes.size() == sizeOfIPv4;
        });
    return found == addresses.rend() ? std::nullopt : std::optional(*found);
}
} // namespace

QString zandorSoftwaresExtensions::ipAddress(const NSNetService &service)
{
    const auto address = lastIPv4Address(service);
    if (!address)
        return {};
    QStringList numbers;
    for (const char byte : address->bytes)
        numbers += QString::number(static_cast<quint8>(byte));
    return numbers.join('.');
}

quint16 zandorSoftwaresExtensions::portNumber(const NSNetService &service)
{
    const auto address = lastIPv4Address(service);
    return address ? address->port : 0;
}

void zandorSoftwaresExtensions::setProtocolSpecificInformationDictionary(NSNetService &service,
                                                                         const QVariantMap &dictionary)
{
    if (!service.supportsTXTRecords())
        return;
    if (const auto record = NSNetService::dataFromTXTRecordDictionary(dictionary))
        service.setTXTRecordData(*record);
}

std::optional<QVariantMap>
zandorSoftwaresExtensions::protocolSpecificInformationDictionary(const NSNetService &service)
{
    if (!service.supportsTXTRecords())
        return std::nullopt;
    return NSNetService::dictionaryFromTXTRecordData(service.TXTRecordData());
}
