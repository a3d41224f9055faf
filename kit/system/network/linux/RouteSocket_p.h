// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>

struct nlmsghdr;

/// Asks the kernel for its tables of routes and interfaces. BLOCKING: the kernel answers at once; two seconds
/// bound an answer that does not come.
class RouteSocket
{
public:
    RouteSocket();
    ~RouteSocket();
    RouteSocket(const RouteSocket &) = delete;
    RouteSocket &operator=(const RouteSocket &) = delete;

    /// Calls `visit` for each entry of the table that the request of that type and content names. False when
    /// the table could not be read to its end.
    bool dump(quint16 type, const QByteArray &content, const std::function<void(const nlmsghdr *)> &visit);

private:
    int m_descriptor;
    quint32 m_sequence = 0;
};
