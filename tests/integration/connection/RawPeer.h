// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// A peer that writes what it likes onto a socket, blocking.
class RawPeer
{
public:
    explicit RawPeer(const QString &path) : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray bytes = path.toUtf8();
        std::memcpy(address.sun_path, bytes.constData(), static_cast<size_t>(bytes.size()));
        m_connected = ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    }
    ~RawPeer() { ::close(m_socket); }
    RawPeer(const RawPeer &) = delete;
    RawPeer &operator=(const RawPeer &) = delete;

    bool isConnected() const { return m_connected; }

    /// False when the other side has closed before it took everything.
    bool send(const QByteArray &bytes)
    {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t n = ::send(m_socket, bytes.constData() + done,
                                     static_cast<size_t>(bytes.size() - done), MSG_NOSIGNAL);
            if (n <= 0)
                return false;
            done += n;
        }
        return true;
    }

    /// Reads until the other side closes; what has come by then.
    QByteArray waitForClose()
    {
        QByteArray bytes;
        char buffer[4096];
        ssize_t size = 0;
        while ((size = ::recv(m_socket, buffer, sizeof buffer, 0)) > 0)
            bytes.append(buffer, size);
        return bytes;
    }

    /// Whether the other side closes in this time; for peers that are owed no bytes.
    bool closesWithin(std::chrono::milliseconds limit) const
    {
        pollfd polled{m_socket, POLLIN, 0};
        return ::poll(&polled, 1, static_cast<int>(limit.count())) > 0;
    }
    bool isClosed() const { return closesWithin(std::chrono::milliseconds(0)); }

    /// Whether the other side has closed, whatever is left to be read.
    bool isHungUp() const
    {
        pollfd polled{m_socket, 0, 0};
        return ::poll(&polled, 1, 0) > 0 && (polled.revents & POLLHUP) != 0;
    }

    /// Whether a call of "pong" has an answer.
    bool isAnswered()
    {
        char buffer[4096];
        return send(call(0)) && ::recv(m_socket, buffer, sizeof buffer, 0) > 0;
    }

    /// The handshake of a well-behaved client.
    void authenticate()
    {
        send(QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::geteuid()).toHex() + "\r\n");
        char buffer[256];
        if (::recv(m_socket, buffer, sizeof buffer, 0) > 0)
            send("BEGIN\r\n");
    }

    /// The same in one piece, for who does not wait for the answers.
    void introduce() { send(QByteArray(1, '\0') + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"); }

    /// How many messages have come since the handshake; does not wait.
    int replies()
    {
        char buffer[4096];
        ssize_t size = 0;
        while ((size = ::recv(m_socket, buffer, sizeof buffer, MSG_DONTWAIT)) > 0)
            m_received.append(buffer, size);
        if (!m_isAccepted) {
            const qsizetype accepted = m_received.indexOf("OK ");
            const qsizetype end = accepted < 0 ? -1 : m_received.indexOf("\r\n", accepted);
            if (end < 0)
                return 0;
            m_received.remove(0, end + 2);
            m_isAccepted = true;
        }
        while (m_received.size() >= 16) {
            quint32 body = 0;
            quint32 fields = 0;
            std::memcpy(&body, m_received.constData() + 4, 4);
            std::memcpy(&fields, m_received.constData() + 12, 4);
            const auto whole = static_cast<qsizetype>(16 + (fields + 7) / 8 * 8 + body);
            if (m_received.size() < whole)
                break;
            m_last = m_received.left(whole);
            m_received.remove(0, whole);
            ++m_replies;
        }
        return m_replies;
    }

    /// Waits until so many have come; false when the other side closes before, or 60 s have passed.
    bool waitForReplies(int count)
    {
        pollfd polled{m_socket, POLLIN, 0};
        while (replies() < count) {
            if (::poll(&polled, 1, 60'000) <= 0 || (polled.revents & POLLHUP) != 0)
                return replies() >= count;
        }
        return true;
    }

    /// The last of them.
    QByteArray lastReply() const { return m_last; }

    /// A method call, for "pong" unless told, whose header claims a body of so many bytes.
    static QByteArray call(quint32 bodySize, const QByteArray &member = "pong",
                           const QByteArray &interface = "com.dozely.Object")
    {
        QByteArray fields;
        const auto field = [&](char code, char type, const QByteArray &text) {
            fields.append((8 - fields.size() % 8) % 8, '\0');
            const char head[] = {code, 1, type, 0};
            fields += QByteArray(head, sizeof head) + number(static_cast<quint32>(text.size())) + text + '\0';
        };
        field(1, 'o', "/root");
        field(3, 's', member);
        field(2, 's', interface);
        if (bodySize > 0)
            fields += QByteArray((8 - fields.size() % 8) % 8, '\0') + QByteArray("\x08\x01g\0\x02"
                                                                                 "ay\0",
                                                                                 8);
        QByteArray header = QByteArray("l\1\0\1", 4) + number(bodySize) + number(1) +
                            number(static_cast<quint32>(fields.size())) + fields;
        header.append((8 - header.size() % 8) % 8, '\0');
        return header;
    }

private:
    static QByteArray number(quint32 value)
    {
        QByteArray bytes(4, '\0');
        std::memcpy(bytes.data(), &value, 4); // the messages say "little-endian", as this machine is
        return bytes;
    }

    int m_socket;
    bool m_connected = false;
    bool m_isAccepted = false;
    QByteArray m_received;
    QByteArray m_last;
    int m_replies = 0;
};
