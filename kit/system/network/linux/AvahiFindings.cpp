// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiFindings_p.h"

#include "DozelyKit/system/network/linux/AvahiArguments_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
constexpr qsizetype sizeOfIPv4 = 4;
constexpr qsizetype sizeOfIPv6 = 16;

bool isOfLink(const QByteArray &bytes)
{
    return bytes.size() == sizeOfIPv6 && static_cast<quint8>(bytes.at(0)) == 0xFE &&
           (static_cast<quint8>(bytes.at(1)) & 0xC0) == 0x80; // fe80::/10
}
} // namespace

AvahiFindings::Change AvahiFindings::resolved(const QVariantList &arguments)
{
    // interface, protocol, name, type, domain, host, address protocol, address, port, TXT, flags
    constexpr qsizetype count = 11;
    if (arguments.size() != count)
        return Change::Nothing;
    const int interface = arguments.at(0).toInt();
    const QString host = arguments.at(5).toString();
    m_port = static_cast<quint16>(arguments.at(8).toUInt());
    m_record = AvahiArguments::recordFrom(arguments.at(9).toList());
    if (host == m_hostName && interface == m_interface)
        return Change::Record;
    forgetAddresses();
    m_hostName = host;
    m_interface = interface;
    return Change::Host;
}

AvahiFindings::Change AvahiFindings::browsed(const QByteArray &signal, const QVariantList &arguments)
{
    // interface, protocol, name, class, type, data, flags
    constexpr qsizetype count = 7;
    if (arguments.size() != count)
        return Change::Nothing;
    const int interface = arguments.at(0).toInt();
    const QByteArray bytes = arguments.at(5).toByteArray();
    if (bytes.size() != sizeOfIPv4 && bytes.size() != sizeOfIPv6)
        return Change::Nothing;
    Told told{interface, arguments.at(1).toInt(), {}};
    told.address.family =
        bytes.size() == sizeOfIPv4 ? NetServices::Address::Family::IPv4 : NetServices::Address::Family::IPv6;
    told.address.bytes = bytes;
    told.address.scope = isOfLink(bytes) ? static_cast<quint32>(std::max(0, interface)) : 0;
    const bool isKnown = m_told.contains(told);
    if (signal == "ItemNew" && !isKnown && m_told.size() < mostAddresses)
        m_told += told;
    else if (signal == "ItemRemove" && isKnown)
        m_told.removeOne(told);
    else
        return Change::Nothing;
    return Change::Addresses;
}

NetServices::Findings AvahiFindings::findings() const
{
    NetServices::Findings findings{m_hostName, m_port, {}, m_record};
    for (const Told &told : m_told) {
        NetServices::Address address = told.address;
        address.port = m_port;
        if (!findings.addresses.contains(address))
            findings.addresses += address;
    }
    return findings;
}

} // namespace dozely
