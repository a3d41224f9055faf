// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <functional>

struct nlmsghdr;

namespace dozely
{

/// Asks the kernel about routes and interfaces, and believes the kernel alone: another process may write to
/// this socket, and the numbers of the questions are easily guessed.
///
/// A question is the type of its message and what follows the message's header. BLOCKING: the kernel answers
/// at once; two seconds bound an answer that does not come.
class DOZELYKIT_AUTOTEST_EXPORT RouteSocket
{
public:
    using Visitor = std::function<void(const nlmsghdr *)>;

    RouteSocket();
    ~RouteSocket();
    RouteSocket(const RouteSocket &) = delete;
    RouteSocket &operator=(const RouteSocket &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    /// Calls `visit` for the one answer. False when there is none, or it is an error.
    bool ask(quint16 type, const QByteArray &content, const Visitor &visit);

    /// Calls `visit` for each entry of the table that the question names. False when the table could not be
    /// read to its end.
    bool dump(quint16 type, const QByteArray &content, const Visitor &visit);

private:
    enum class Step { Next, End, Failure };

    bool send(quint16 type, quint16 flags, const QByteArray &content);
    bool receive(const std::function<Step(const nlmsghdr *)> &take);

    int m_descriptor;
    quint32 m_sequence = 0;
};

} // namespace dozely
