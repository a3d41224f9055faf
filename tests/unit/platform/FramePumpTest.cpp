// SPDX-License-Identifier: MIT
#include "platform/linux/FramePump_p.h"
#include "platform/linux/SaslServer_p.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

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
    SocketPair peer; // the pump reads `ours`
    SocketPair bus;  // the pump writes `ours`, sd-bus would read `theirs`
    FramePump pump{peer.ours, bus.ours, FramePump::Head::Message};
};
} // namespace

TEST_F(FramePumpTest, PassesMessagesOnToTheByte)
{
    const QByteArray bytes = message(16, 0) + message(13, 7) + message(8, 300, 'B');
    SocketPair::write(peer.theirs, bytes);
    EXPECT_GT(pump.pump(), 0);
    EXPECT_EQ(pump.pump(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), bytes);
}

TEST_F(FramePumpTest, HoldsTheHeadOfAMessageBackUntilItIsWhole)
{
    const QByteArray bytes = message(16, 4);
    SocketPair::write(peer.theirs, bytes.left(15));
    EXPECT_EQ(pump.pump(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), "");
    SocketPair::write(peer.theirs, bytes.mid(15));
    EXPECT_GT(pump.pump(), 0);
    EXPECT_EQ(SocketPair::read(bus.theirs), bytes);
}

TEST_F(FramePumpTest, RefusesAMessageAtItsHeadWhateverTheByteOrder)
{
    for (const char order : {'l', 'B'}) {
        constexpr auto largest = static_cast<quint32>(FramePump::maximumMessage);
        SocketPair::write(peer.theirs, head(8, largest - 24, order));
        FramePump fresh(peer.ours, bus.ours, FramePump::Head::Message);
        EXPECT_GT(fresh.pump(), 0) << order; // this one is just small enough
        SocketPair::write(peer.theirs, head(8, largest - 23, order));
        FramePump another(peer.ours, bus.ours, FramePump::Head::Message);
        EXPECT_EQ(another.pump(), -EMSGSIZE) << order;
    }
}

TEST_F(FramePumpTest, IsNotDeceivedBySizesThatOverflow)
{
    SocketPair::write(peer.theirs, head(0xffffffff, 0xffffffff));
    EXPECT_EQ(pump.pump(), -EMSGSIZE);
}

TEST_F(FramePumpTest, RefusesWhatIsNoMessage)
{
    SocketPair::write(peer.theirs, message(8, 0) + "GET / HTTP/1.0\r\n\r\n");
    EXPECT_EQ(pump.pump(), -EPROTO);
}

TEST_F(FramePumpTest, TellsTheEndOfTheStreamAfterWhatCameBeforeIt)
{
    SocketPair::write(peer.theirs, message(8, 0));
    peer.closeTheirs();
    EXPECT_GT(pump.pump(), 0);
    EXPECT_GT(pump.pump(), 0); // the end is something to read, once
    EXPECT_EQ(pump.pump(), 0);
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
        while (pump.pump() > 0) {
        }
        passed += SocketPair::read(bus.theirs);
    }
    EXPECT_EQ(passed, bytes);
}

TEST_F(FramePumpTest, LetsTheAnswersToAHandshakePassUpToItsLastLine)
{
    FramePump client(peer.ours, bus.ours, FramePump::Head::HandshakeAnswer);
    const QByteArray bytes = "DATA\r\nOK 0123\r\n" + message(8, 0);
    for (const char byte : bytes) {
        SocketPair::write(peer.theirs, QByteArray(1, byte));
        EXPECT_GE(client.pump(), 0);
    }
    EXPECT_EQ(SocketPair::read(bus.theirs), bytes);
    SocketPair::write(peer.theirs, "no message, and no line"); // the handshake is over
    EXPECT_EQ(client.pump(), -EPROTO);
}

TEST_F(FramePumpTest, RefusesAnEndlessAnswerToAHandshake)
{
    FramePump client(peer.ours, bus.ours, FramePump::Head::HandshakeAnswer);
    SocketPair::write(peer.theirs, QByteArray(5000, 'x'));
    EXPECT_EQ(client.pump(), -EPROTO);
}

namespace
{
class SaslServerTest : public testing::Test
{
protected:
    /// What a peer with the user id 1000 is answered.
    QByteArray answerTo(const QByteArray &lines)
    {
        SocketPair::write(peer.theirs, lines);
        result = server.advance(peer.ours);
        return SocketPair::read(peer.theirs);
    }

    using Result = SaslServer::Result;
    SocketPair peer;
    SaslServer server{1000, "0123456789abcdef0123456789abcdef"};
    Result result = Result::NeedsMore;
    const QByteArray zero = QByteArray(1, '\0');
    const QByteArray ok = "OK 0123456789abcdef0123456789abcdef\r\n";
};
} // namespace

TEST_F(SaslServerTest, AcceptsThePeerUnderItsOwnName)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXTERNAL 31303030\r\n"), ok);
    EXPECT_EQ(result, Result::NeedsMore);
    EXPECT_EQ(answerTo("NEGOTIATE_UNIX_FD\r\n"), "ERROR\r\n");
    EXPECT_EQ(answerTo("BEGIN\r\n"), "");
    EXPECT_EQ(result, Result::Done);
}

TEST_F(SaslServerTest, AsksForANameThatIsNotGivenAndTakesNoneForAnAnswer)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"), "DATA\r\n" + ok);
    EXPECT_EQ(result, Result::Done);
}

TEST_F(SaslServerTest, RejectsSomebodyElsesName)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXTERNAL 30\r\n"), "REJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("AUTH EXTERNAL\r\nDATA 30\r\n"), "DATA\r\nREJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("BEGIN\r\n"), "");
    EXPECT_EQ(result, Result::Failed);
}

TEST_F(SaslServerTest, ForgetsAnAcceptanceThatThePeerTakesBack)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXTERNAL 31303030\r\nCANCEL\r\n"), ok + "REJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("BEGIN\r\n"), "");
    EXPECT_EQ(result, Result::Failed);
}

TEST_F(SaslServerTest, OffersOneMechanismOnly)
{
    EXPECT_EQ(answerTo(zero + "AUTH\r\n"), "REJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("AUTH ANONYMOUS\r\n"), "REJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("AUTH DBUS_COOKIE_SHA1 31303030\r\n"), "REJECTED EXTERNAL\r\n");
    EXPECT_EQ(answerTo("DATA 31303030\r\n"), "ERROR\r\n"); // nobody asked
    EXPECT_EQ(answerTo("AUTH EXTERNAL 31303030\r\n"), ok);
}

TEST_F(SaslServerTest, TakesTheHandshakeInPiecesAndLeavesNothingOfItUnread)
{
    QByteArray answers;
    for (const char byte : zero + "AUTH EXTERNAL 31303030\r\nBEGIN\r\n") {
        EXPECT_EQ(result, Result::NeedsMore);
        answers += answerTo(QByteArray(1, byte));
        EXPECT_EQ(SocketPair::read(peer.ours), ""); // what stays would wake the loop again and again
    }
    EXPECT_EQ(answers, ok);
    EXPECT_EQ(result, Result::Done);
}

TEST_F(SaslServerTest, LeavesWhatFollowsTheHandshakeUnread)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXTERNAL 31303030\r\nBEGIN\r\nmessage"), ok);
    EXPECT_EQ(result, Result::Done);
    EXPECT_EQ(SocketPair::read(peer.ours), "message");
}

TEST_F(SaslServerTest, FailsWhenTheFirstByteIsMissing)
{
    EXPECT_EQ(answerTo("AUTH EXTERNAL 31303030\r\n"), "");
    EXPECT_EQ(result, Result::Failed);
}

TEST_F(SaslServerTest, FailsAtALineOrAHandshakeWithoutEnd)
{
    EXPECT_EQ(answerTo(zero + QByteArray(SaslServer::maximumLine, 'A')), "");
    EXPECT_EQ(result, Result::Failed);
    SocketPair another;
    SaslServer talked{1000, "0123"};
    SocketPair::write(another.theirs, zero + QByteArray("WHAT\r\n").repeated(SaslServer::maximumLines + 1));
    EXPECT_EQ(talked.advance(another.ours), Result::Failed);
}

TEST_F(SaslServerTest, FailsWhenThePeerGoes)
{
    EXPECT_EQ(answerTo(zero + "AUTH EXT"), "");
    EXPECT_EQ(result, Result::NeedsMore);
    peer.closeTheirs();
    EXPECT_EQ(server.advance(peer.ours), Result::Failed);
}
