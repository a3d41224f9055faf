// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NetServices.h"

/// A network whose news the test tells: it calls the handlers, and sees what was asked for. One service at a
/// time.
class FakeNetServices : public dozely::NetServices
{
public:
    bool supportsTxtRecords() const override { return supports; }

    std::unique_ptr<Publication> publish(const Service &service, quint16 port, const QByteArray &txtRecord,
                                         bool mayRename, PublicationHandler &handler) override
    {
        asked = service;
        askedPort = port;
        askedRecord = txtRecord;
        askedMayRename = mayRename;
        publisher = &handler;
        return std::make_unique<Running>(*this);
    }

    std::unique_ptr<Activity> resolve(const Service &service, ResolutionHandler &handler) override
    {
        asked = service;
        resolver = &handler;
        return std::make_unique<Running>(*this);
    }

    /// An IPv4 address for findings.
    static Address ipv4(quint8 a, quint8 b, quint8 c, quint8 d, quint16 port)
    {
        QByteArray bytes;
        for (const quint8 number : {a, b, c, d})
            bytes += static_cast<char>(number);
        return {Address::Family::IPv4, bytes, port, 0};
    }

    /// The IPv6 address of the link that ends with this number.
    static Address ipv6(char last, quint16 port)
    {
        QByteArray bytes(16, '\0');
        bytes[0] = static_cast<char>(0xFE);
        bytes[1] = static_cast<char>(0x80);
        bytes[15] = last;
        return {Address::Family::IPv6, bytes, port, 2};
    }

    bool supports = true;
    Service asked;
    quint16 askedPort = 0;
    QByteArray askedRecord; ///< The latest.
    bool askedMayRename = false;
    PublicationHandler *publisher = nullptr; ///< Null when nothing is being published.
    ResolutionHandler *resolver = nullptr;   ///< Null when nothing is being resolved.

private:
    class Running : public Publication
    {
    public:
        explicit Running(FakeNetServices &network) : m_network(network) {}
        ~Running() override
        {
            m_network.publisher = nullptr;
            m_network.resolver = nullptr;
        }
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;
        void setTxtRecord(const QByteArray &record) override { m_network.askedRecord = record; }

    private:
        FakeNetServices &m_network;
    };
};
