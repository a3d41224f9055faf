// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/FramePump_p.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <utility>

namespace dozely
{

namespace
{
constexpr qsizetype headSize = 16; // what every message begins with; it tells the sizes of the rest

/// The size of a message, by its head (D-Bus Specification, "Message Format"); 0 when it is none.
quint64 messageSize(const char *head)
{
    const bool isLittle = head[0] == 'l';
    if (!isLittle && head[0] != 'B')
        return 0;
    const auto number = [&](const char *at) -> quint64 {
        return isLittle ? qFromLittleEndian<quint32>(at) : qFromBigEndian<quint32>(at);
    };
    const quint64 body = number(head + 4);
    const quint64 fields = number(head + 12);
    return headSize + (fields + 7) / 8 * 8 + body;
}
} // namespace

qsizetype FramePump::check(QByteArrayView bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        if (m_left > 0) {
            const quint64 step = std::min(m_left, static_cast<quint64>(bytes.size() - done));
            done += static_cast<qsizetype>(step);
            m_left -= step;
        } else if (bytes.size() - done < headSize) {
            break;
        } else {
            m_left = messageSize(bytes.data() + done);
            if (m_left == 0)
                return -EPROTO;
            if (m_left > maximumMessage)
                return -EMSGSIZE;
        }
    }
    return done;
}

int FramePump::forward(QByteArrayView bytes)
{
    const ssize_t sent =
        ::send(m_feed, bytes.data(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && errno != EAGAIN && errno != EINTR)
        return -errno;
    m_backlog = bytes.sliced(std::max<ssize_t>(sent, 0)).toByteArray();
    return sent > 0 ? 1 : 0;
}

int FramePump::pump()
{
    if (!m_backlog.isEmpty())
        return forward(std::exchange(m_backlog, {}));
    if (m_ended || m_isDrained)
        return 0;
    std::array<char, 16 << 10> buffer;
    const qsizetype held = m_held.size();
    std::copy(m_held.cbegin(), m_held.cend(), buffer.begin());
    const ssize_t got =
        ::recv(m_peer, buffer.data() + held, buffer.size() - static_cast<size_t>(held), MSG_DONTWAIT);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
        m_isDrained = true;
        return 0;
    }
    if (got <= 0) {
        m_ended = true;
        ::shutdown(m_feed, SHUT_WR); // sd-bus is to find the end after all that came before it
        return 1;
    }
    QByteArrayView bytes(buffer.data(), held + got);
    m_isDrained = bytes.size() < static_cast<qsizetype>(buffer.size());
    QByteArray handshake;
    while (!m_handshake.isDone() && !bytes.isEmpty()) {
        QByteArray line;
        if (m_handshake.take(bytes.front(), &line))
            handshake += line;
        if (m_handshake.hasFailed())
            return -EPROTO;
        bytes = bytes.sliced(1);
    }
    const qsizetype passed = check(bytes);
    if (passed < 0)
        return static_cast<int>(passed);
    m_held = bytes.sliced(passed).toByteArray();
    const QByteArrayView messages = bytes.first(passed);
    if (handshake.isEmpty())
        return passed > 0 ? forward(messages) : 0;
    return forward(handshake + QByteArray(messages.data(), messages.size()));
}

} // namespace dozely
