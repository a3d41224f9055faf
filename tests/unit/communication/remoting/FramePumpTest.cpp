// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/FramePump_p.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

using namespace dozely;

namespace
{
/// Two connected sockets; `ours` does not wait.
struct SocketPair {
    SocketPair()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()), 0);
        ours = ends[0];
        theirs = ends[1];
    }
    ~SocketPair()
    {
        ::close(ours);
        if (theirs >= 0)
            ::close(theirs);
    }
    SocketPair(const SocketPair &) = delete;
    SocketPair &operator=(const SocketPair &) = delete;

    static void write(int end, const QByteArray &bytes)
    {
        EXPECT_EQ(::send(end, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
    }
    static QByteArray read(int end)
    {
        QByteArray bytes(1 << 20, '\0');
        const ssize_t size = ::recv(end, bytes.data(), static_cast<size_t>(bytes.size()), 0);
        return bytes.left(std::max<ssize_t>(size, 0));
    }
    void closeTheirs() { ::close(std::exchange(theirs, -1)); }

    int ours = -1;
    int theirs = -1;
};

QByteArray number(quint32 value, char order)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 4; ++i)
        bytes[order == 'l' ? i : 3 - i] = static_cast<char>(value >> 8 * i);
    return bytes;
}

/// The head of a message of that size in either byte order.
QByteArray head(quint32 fields, quint32 body, char order = 'l')
{
    return QByteArray(1, order) + QByteArray("\1\0\1", 3) + number(body, order) + number(1, order) +
           number(fields, order);
}

QByteArray message(quint32 fields, quint32 body, char order = 'l')
{
    return head(fields, body, order) + QByteArray((fields + 7) / 8 * 8 + body, 'x');
}

class FramePumpTest : public testing::Test
{
protected:
    FramePumpTest()
    {
        SocketPair::write(peer.theirs, "OK 0123\r\n"); // the handshake of a server
        EXPECT_GT(pump.pump(), 0);
        EXPECT_EQ(SocketPair::read(bus.theirs), "OK 0123\r\n");
    }

    /// As the loop does it once the socket is readable.
    int pumpAgain()
    {
        pump.wake();
        return pump.pump();
    }

    SocketPair peer; // the pump reads `ours`
    SocketPair bus;  // the pump writes `ours`, sd-bus would read `theirs`
    FramePump pump{peer.ours, bus.ours, HandshakeFilter::ofServer()};
};
} // namespace

TEST_F(FramePumpTest, PassesMessagesOnToTheByte)
{
    const QByteArray bytes = message(16, 0) + message(13, 7) + message(8, 300, 'B');
    SocketPair::write(peer.theirs, bytes);
    EXPECT_GT(pumpAgain(), 0);
    EXPECT_EQ(pumpAgain(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), bytes);
}

TEST_F(FramePumpTest, HoldsTheHeadOfAMessageBackUntilItIsWhole)
{
    const QByteArray bytes = message(16, 4);
    SocketPair::write(peer.theirs, bytes.left(15));
    EXPECT_EQ(pumpAgain(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), "");
    SocketPair::write(peer.theirs, bytes.mid(15));
    EXPECT_GT(pumpAgain(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), bytes);
}

TEST_F(FramePumpTest, PassesTheLargestMessageOn)
{
    constexpr auto largest = static_cast<quint32>(FramePump::maximumMessage);
    SocketPair::write(peer.theirs, head(8, largest - 24));
    EXPECT_GT(pumpAgain(), 0);
}

TEST_F(FramePumpTest, RefusesALargerMessageAtItsHead)
{
    constexpr auto largest = static_cast<quint32>(FramePump::maximumMessage);
    SocketPair::write(peer.theirs, head(8, largest - 23));
    EXPECT_EQ(pumpAgain(), -EMSGSIZE);
}

TEST_F(FramePumpTest, RefusesALargerMessageInTheOtherByteOrderToo)
{
    constexpr auto largest = static_cast<quint32>(FramePump::maximumMessage);
    SocketPair::write(peer.theirs, head(8, largest - 23, 'B'));
    EXPECT_EQ(pumpAgain(), -EMSGSIZE);
}

TEST_F(FramePumpTest, IsNotDeceivedBySizesThatOverflow)
{
    SocketPair::write(peer.theirs, head(0xffffffff, 0xffffffff));
    EXPECT_EQ(pumpAgain(), -EMSGSIZE);
}

TEST_F(FramePumpTest, RefusesWhatIsNoMessage)
{
    SocketPair::write(peer.theirs, message(8, 0) + "GET / HTTP/1.0\r\n\r\n");
    EXPECT_EQ(pumpAgain(), -EPROTO);
}

TEST_F(FramePumpTest, TellsTheEndOfTheStreamAfterWhatCameBeforeIt)
{
    SocketPair::write(peer.theirs, message(8, 0));
    peer.closeTheirs();
    EXPECT_GT(pumpAgain(), 0);
    EXPECT_GT(pumpAgain(), 0); // the end is something to read, once
    EXPECT_EQ(pumpAgain(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), message(8, 0));
    char byte = 0;
    EXPECT_EQ(::recv(bus.theirs, &byte, 1, 0), 0);
}

TEST_F(FramePumpTest, WaitsWhenSdBusHasNoRoomAndLosesNothing)
{
    const QByteArray bytes = message(8, 3 << 20);
    QByteArray passed;
    for (qsizetype sent = 0; passed.size() < bytes.size();) {
        const ssize_t n = ::send(peer.theirs, bytes.constData() + sent,
                                 static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        sent += std::max<ssize_t>(n, 0);
        while (pumpAgain() > 0) {
        }
        passed += SocketPair::read(bus.theirs);
    }
    EXPECT_EQ(passed, bytes);
}

TEST_F(FramePumpTest, ReadsNothingMoreUntilTheSocketIsReadableAgain)
{
    SocketPair::write(peer.theirs, message(8, 0));
    EXPECT_GT(pumpAgain(), 0);
    SocketPair::write(peer.theirs, message(8, 0));
    EXPECT_EQ(pump.pump(), 0); // what came after a read that took everything is told of by the loop
    EXPECT_GT(pumpAgain(), 0);
}

namespace
{
/// A client with the user id 1000 speaks to us.
class HandshakeFilterTest : public testing::Test
{
protected:
    /// What sd-bus gets to see of these bytes.
    QByteArray passed(const QByteArray &bytes)
    {
        QByteArray all;
        for (const char byte : bytes) {
            QByteArray line;
            if (filter.take(byte, &line))
                all += line;
        }
        return all;
    }

    HandshakeFilter filter = HandshakeFilter::ofClient(1000);
    const QByteArray zero = QByteArray(1, '\0');
    const QByteArray ours = QByteArray::number(::geteuid()).toHex();
    const QByteArray nobody = QByteArray("4294967294").toHex();
};
} // namespace

TEST_F(HandshakeFilterTest, PutsOurIdentityInThePlaceOfAClaimThatIsTrue)
{
    EXPECT_EQ(passed(zero + "AUTH EXTERNAL 31303030\r\n"), zero + "AUTH EXTERNAL " + ours + "\r\n");
    EXPECT_EQ(passed("NEGOTIATE_UNIX_FD\r\nBEGIN\r\n"), "NEGOTIATE_UNIX_FD\r\nBEGIN\r\n");
    EXPECT_TRUE(filter.isDone());
    EXPECT_FALSE(filter.hasFailed());
}

TEST_F(HandshakeFilterTest, PutsNobodyInThePlaceOfAClaimThatIsFalse)
{
    EXPECT_EQ(passed(zero + "AUTH EXTERNAL 30\r\n"), zero + "AUTH EXTERNAL " + nobody + "\r\n");
    EXPECT_EQ(passed("AUTH EXTERNAL\r\nDATA 30\r\n"), "AUTH EXTERNAL\r\nDATA " + nobody + "\r\n");
    EXPECT_EQ(passed("AUTH EXTERNAL  31303030\r\n"), "AUTH EXTERNAL " + nobody + "\r\n");
    EXPECT_EQ(passed("DATA 31303030\r\n"), "DATA " + ours + "\r\n");
}

TEST_F(HandshakeFilterTest, LetsWhoClaimsNothingBeWhoTheKernelSays)
{
    const QByteArray lines = zero + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n";
    EXPECT_EQ(passed(lines), lines);
    EXPECT_TRUE(filter.isDone());
}

TEST_F(HandshakeFilterTest, AcceptsNobodyWhoseIdentityIsNotKnown)
{
    filter = HandshakeFilter::ofClient(std::nullopt);
    EXPECT_EQ(passed(zero + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"), "");
    EXPECT_TRUE(filter.hasFailed());
}

TEST_F(HandshakeFilterTest, FailsWhenTheFirstByteIsMissing)
{
    EXPECT_EQ(passed("AUTH EXTERNAL 31303030\r\n"), "");
    EXPECT_TRUE(filter.hasFailed());
}

TEST_F(HandshakeFilterTest, FailsAtALineWithoutEnd)
{
    EXPECT_EQ(passed(zero + QByteArray(HandshakeFilter::maximumLine, 'A')), "");
    EXPECT_TRUE(filter.hasFailed());
}

TEST_F(HandshakeFilterTest, FailsAtAHandshakeWithoutEnd)
{
    passed(zero + QByteArray("WHAT\r\n").repeated(HandshakeFilter::maximumLines));
    EXPECT_FALSE(filter.hasFailed());
    passed("W");
    EXPECT_TRUE(filter.hasFailed());
}

TEST_F(HandshakeFilterTest, LetsTheAnswersOfAServerPassUpToTheLast)
{
    filter = HandshakeFilter::ofServer();
    EXPECT_EQ(passed("DATA\r\n"), "DATA\r\n");
    EXPECT_FALSE(filter.isDone());
    EXPECT_EQ(passed("OK 0123\r\n"), "OK 0123\r\n");
    EXPECT_TRUE(filter.isDone());
}
