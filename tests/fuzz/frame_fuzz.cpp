// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/FramePump_p.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstdint>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

namespace
{
/// The two ends of a stream.
struct SocketPair {
    SocketPair()
    {
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()) != 0)
            __builtin_trap();
    }
    ~SocketPair()
    {
        for (const int end : ends)
            ::close(end);
    }
    SocketPair(const SocketPair &) = delete;
    SocketPair &operator=(const SocketPair &) = delete;

    std::array<int, 2> ends{};
};

QByteArray readAll(int end)
{
    QByteArray all;
    std::array<char, 16 << 10> part;
    for (ssize_t size = 0; (size = ::recv(end, part.data(), part.size(), MSG_DONTWAIT)) > 0;)
        all.append(part.data(), size);
    return all;
}

/// Where the handshake ends in what went on; -1 when it does not. Fails when it is longer than it may be.
qsizetype endOfHandshake(const QByteArray &passed, bool isClient)
{
    const QByteArray last = isClient ? "BEGIN" : "OK";
    qsizetype at = 0;
    for (int lines = 1; at < passed.size(); ++lines) {
        const qsizetype end = passed.indexOf("\r\n", at);
        // Our own user id in the place of a claim is some digits longer than that, perhaps.
        constexpr qsizetype roomForOurId = 32;
        if (end < 0 || end + 2 - at > HandshakeFilter::maximumLine + roomForOurId ||
            lines > HandshakeFilter::maximumLines)
            __builtin_trap();
        const qsizetype head = isClient && lines == 1 ? 1 : 0; // a client begins with the byte 0
        const QByteArray words = passed.mid(at + head, end - at - head);
        at = end + 2;
        if (words == last || words.startsWith(last + ' '))
            return at;
    }
    return -1;
}

/// Messages, the last of which may be unfinished: each begins with a whole head that announces no more than
/// the limit.
void checkMessages(QByteArrayView bytes)
{
    constexpr qsizetype headSize = 16;
    while (!bytes.isEmpty()) {
        if (bytes.size() < headSize || (bytes[0] != 'l' && bytes[0] != 'B'))
            __builtin_trap();
        const auto number = [&](qsizetype at) -> quint64 {
            return bytes[0] == 'l' ? qFromLittleEndian<quint32>(bytes.data() + at)
                                   : qFromBigEndian<quint32>(bytes.data() + at);
        };
        const quint64 size = headSize + (number(12) + 7) / 8 * 8 + number(4);
        if (size > FramePump::maximumMessage)
            __builtin_trap();
        bytes =
            bytes.sliced(static_cast<qsizetype>(std::min<quint64>(size, static_cast<quint64>(bytes.size()))));
    }
}
} // namespace

// What a stranger writes onto our socket, in pieces. The first byte says which side of the handshake he is
// on, the second how large the pieces are.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    const bool isClient = (data[0] & 1) == 0;
    const qsizetype pieceSize = data[1] + 1;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 2), static_cast<qsizetype>(size - 2));

    const SocketPair peer;
    const SocketPair feed;
    FramePump pump(peer.ends[0], feed.ends[0],
                   isClient ? HandshakeFilter::ofClient(1000) : HandshakeFilter::ofServer());
    QByteArray passed;
    for (qsizetype at = 0; at < bytes.size(); at += pieceSize) {
        const QByteArray piece = bytes.mid(at, pieceSize);
        if (::send(peer.ends[1], piece.constData(), static_cast<size_t>(piece.size()), MSG_NOSIGNAL) !=
            piece.size())
            __builtin_trap();
        pump.wake();
        int moved = 0;
        while ((moved = pump.pump()) > 0)
            passed += readAll(feed.ends[1]);
        if (moved < 0)
            break; // the peer is dropped
    }
    passed += readAll(feed.ends[1]);
    if (passed.size() > bytes.size() + 32 * HandshakeFilter::maximumLines)
        __builtin_trap();
    const qsizetype handshake = endOfHandshake(passed, isClient);
    if (handshake >= 0)
        checkMessages(QByteArrayView(passed).sliced(handshake));
    return 0;
}
