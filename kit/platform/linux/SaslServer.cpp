// SPDX-License-Identifier: MIT
#include "platform/linux/SaslServer_p.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>

bool SaslServer::isPeer(const QByteArray &identity) const
{
    // The user id in decimal digits, these in hexadecimal; nothing stands for whoever it is.
    return identity.isEmpty() || identity == QByteArray::number(m_peer).toHex();
}

SaslServer::Result SaslServer::answer(const QByteArray &line, QByteArray *reply)
{
    constexpr char rejection[] = "REJECTED EXTERNAL\r\n";
    const auto accept = [&](const QByteArray &identity) {
        m_awaitsIdentity = false;
        m_accepted = isPeer(identity);
        *reply = m_accepted ? "OK " + m_guid + "\r\n" : QByteArray(rejection);
    };
    if (line == "BEGIN")
        return m_accepted ? Result::Done : Result::Failed;
    if (line == "AUTH EXTERNAL") {
        m_awaitsIdentity = true;
        *reply = "DATA\r\n";
    } else if (line.startsWith("AUTH EXTERNAL ")) {
        accept(line.mid(14));
    } else if (m_awaitsIdentity && (line == "DATA" || line.startsWith("DATA "))) {
        accept(line.mid(5));
    } else if (line == "AUTH" || line.startsWith("AUTH ") || line == "CANCEL" || line.startsWith("ERROR")) {
        m_accepted = m_awaitsIdentity = false;
        *reply = rejection;
    } else {
        *reply = "ERROR\r\n"; // NEGOTIATE_UNIX_FD among them: descriptors of strangers are not wanted
    }
    return Result::NeedsMore;
}

SaslServer::Result SaslServer::advance(int descriptor)
{
    for (;;) {
        std::array<char, maximumLine> buffer;
        const ssize_t seen = ::recv(descriptor, buffer.data(), buffer.size(), MSG_PEEK | MSG_DONTWAIT);
        if (seen < 0 && (errno == EAGAIN || errno == EINTR))
            return Result::NeedsMore;
        if (seen <= 0)
            return Result::Failed;
        const QByteArray line = m_line + QByteArray(buffer.data(), seen);
        const qsizetype end = line.indexOf("\r\n");
        // Taken off the socket exactly up to the line's end; a line without one is taken as far as it goes.
        const qsizetype size = end < 0 ? line.size() : end + 2;
        const qsizetype taken = size - m_line.size();
        if (::recv(descriptor, buffer.data(), static_cast<size_t>(taken), MSG_DONTWAIT) != taken ||
            size > maximumLine)
            return Result::Failed;
        m_line = line.first(size);
        if (!m_begun && m_line.at(0) != '\0')
            return Result::Failed;
        if (end < 0)
            continue;
        if (++m_lines > maximumLines)
            return Result::Failed;
        QByteArray reply;
        const Result result = answer(m_line.sliced(m_begun ? 0 : 1).chopped(2), &reply);
        m_begun = true;
        m_line.clear();
        if (result != Result::NeedsMore)
            return result;
        if (::send(descriptor, reply.constData(), static_cast<size_t>(reply.size()),
                   MSG_NOSIGNAL | MSG_DONTWAIT) != reply.size())
            return Result::Failed; // it does not even read what it asked for
    }
}
