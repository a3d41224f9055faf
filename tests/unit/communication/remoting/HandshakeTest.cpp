// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/Handshake_p.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

using State = Handshake::State;

namespace
{
/// A client with the user id 1000 speaks to us, or a server does.
class HandshakeTest : public testing::Test
{
protected:
    /// Takes these bytes with what is left of the ones before; the answers are those since the last time.
    State take(const QByteArray &bytes)
    {
        answer.clear();
        held += bytes;
        return handshake.take(&held, &answer);
    }

    void startAnew(const Handshake &other)
    {
        handshake = other;
        held.clear();
    }

    Handshake handshake = Handshake::ofServer(1000);
    QByteArray held;
    QByteArray answer;
    const QByteArray zero = QByteArray(1, '\0');
    const QByteArray rejected = "REJECTED EXTERNAL\r\n";
};
} // namespace

TEST_F(HandshakeTest, AClientSaysAllThatItHasToSayAtOnce)
{
    EXPECT_EQ(Handshake::opening(1000), zero + "AUTH EXTERNAL 31303030\r\nBEGIN\r\n");
    EXPECT_EQ(take(Handshake::opening(1000) + "l\1\0\1"), State::Done);
    EXPECT_TRUE(answer.startsWith("OK "));
    EXPECT_EQ(held, "l\1\0\1") << "messages follow";
}

TEST_F(HandshakeTest, AServerNamesItselfByThirtyTwoDigits)
{
    EXPECT_EQ(take(zero + "AUTH EXTERNAL 31303030\r\n"), State::Going);
    EXPECT_EQ(answer.size(), qstrlen("OK ") + 32 + 2);
    EXPECT_EQ(QByteArray::fromHex(answer.mid(3, 32)).size(), 16);
    EXPECT_EQ(take("BEGIN\r\n"), State::Done);
    EXPECT_EQ(answer, "");
}

TEST_F(HandshakeTest, TakesPiecesOfAnySize)
{
    const QByteArray opening = Handshake::opening(1000);
    for (const char byte : opening.chopped(1))
        EXPECT_EQ(take(QByteArray(1, byte)), State::Going);
    EXPECT_EQ(take(opening.last(1)), State::Done);
    EXPECT_EQ(take(""), State::Going) << "which is over";
}

TEST_F(HandshakeTest, RejectsAClaimThatIsFalse)
{
    for (const char *const claim : {"30", "34323934393637323934", "313030", "3130303031", " 31303030", "1000",
                                    "31303030 ", "+1000", "2b31303030", "303130303030", "x"}) {
        SCOPED_TRACE(claim);
        startAnew(Handshake::ofServer(1000));
        EXPECT_EQ(take(zero + "AUTH EXTERNAL " + claim + "\r\n"), State::Going);
        EXPECT_EQ(answer, rejected);
        EXPECT_EQ(take("AUTH EXTERNAL\r\nDATA " + QByteArray(claim) + "\r\n"), State::Going);
        EXPECT_EQ(answer, "DATA\r\n" + rejected);
        EXPECT_EQ(take("BEGIN\r\n"), State::Failed);
    }
}

TEST_F(HandshakeTest, MayBeTriedAgain)
{
    EXPECT_EQ(take(zero + "AUTH EXTERNAL 30\r\nAUTH EXTERNAL 31303030\r\nBEGIN\r\n"), State::Done);
    EXPECT_TRUE(answer.startsWith(rejected + "OK "));
}

TEST_F(HandshakeTest, IsOverWhenAClaimIsWithdrawnOrFailsLater)
{
    for (const char *const line : {"CANCEL", "ERROR", "ERROR \"no\"", "AUTH", "AUTH EXTERNAL 30"}) {
        SCOPED_TRACE(line);
        startAnew(Handshake::ofServer(1000));
        EXPECT_EQ(take(zero + "AUTH EXTERNAL 31303030\r\n" + line + "\r\n"), State::Going);
        EXPECT_TRUE(answer.endsWith(rejected));
        EXPECT_EQ(take("BEGIN\r\n"), State::Failed);
    }
}

TEST_F(HandshakeTest, LetsWhoClaimsNothingBeWhoTheKernelSays)
{
    EXPECT_EQ(take(zero + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"), State::Done);
    EXPECT_TRUE(answer.startsWith("DATA\r\nOK "));
    startAnew(Handshake::ofServer(1000));
    EXPECT_EQ(take(zero + "AUTH EXTERNAL\r\nDATA 31303030\r\nBEGIN\r\n"), State::Done);
    startAnew(Handshake::ofServer(0));
    EXPECT_EQ(take(zero + "AUTH EXTERNAL 30\r\nBEGIN\r\n"), State::Done);
}

TEST_F(HandshakeTest, TakesAnIdentityOnlyWhenItHasAskedForOne)
{
    EXPECT_EQ(take(zero + "DATA 31303030\r\nDATA\r\n"), State::Going);
    EXPECT_EQ(answer, QByteArray("ERROR \"unknown command\"\r\n").repeated(2));
    EXPECT_EQ(take("AUTH EXTERNAL\r\nCANCEL\r\nDATA\r\n"), State::Going);
    EXPECT_FALSE(answer.contains("OK "));
    EXPECT_EQ(take("BEGIN\r\n"), State::Failed);
}

TEST_F(HandshakeTest, AcceptsNobodyWhoseIdentityIsNotKnown)
{
    startAnew(Handshake::ofServer(std::nullopt));
    EXPECT_EQ(take(zero + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"), State::Failed);
    EXPECT_EQ(answer, "");
}

TEST_F(HandshakeTest, KnowsExternalAlone)
{
    for (const char *const mechanism : {"", " ANONYMOUS", " DBUS_COOKIE_SHA1 31303030", " external"}) {
        SCOPED_TRACE(mechanism);
        startAnew(Handshake::ofServer(1000));
        EXPECT_EQ(take(zero + "AUTH" + mechanism + "\r\n"), State::Going);
        EXPECT_EQ(answer, rejected);
        EXPECT_EQ(take("BEGIN\r\n"), State::Failed);
    }
}

TEST_F(HandshakeTest, AgreesOnNoDescriptorsAndGoesOn)
{
    EXPECT_EQ(take(zero + "AUTH EXTERNAL 31303030\r\nNEGOTIATE_UNIX_FD\r\n"), State::Going);
    EXPECT_TRUE(answer.endsWith("ERROR \"no descriptors travel here\"\r\n"));
    EXPECT_EQ(take("BEGIN\r\n"), State::Done);
}

TEST_F(HandshakeTest, GoesOnAfterACommandThatItDoesNotKnow)
{
    EXPECT_EQ(take(zero + "WHAT\r\nAUTH EXTERNAL 31303030\r\nWHAT_ELSE 1\r\n"), State::Going);
    EXPECT_TRUE(answer.startsWith("ERROR \"unknown command\"\r\nOK "));
    EXPECT_TRUE(answer.endsWith("ERROR \"unknown command\"\r\n"));
    EXPECT_EQ(take("BEGIN\r\n"), State::Done);
}

TEST_F(HandshakeTest, FailsWhenTheFirstByteIsMissing)
{
    EXPECT_EQ(take("AUTH EXTERNAL 31303030\r\n"), State::Failed);
    EXPECT_EQ(answer, "");
    startAnew(Handshake::ofServer(1000));
    EXPECT_EQ(take("A"), State::Failed) << "at once";
}

TEST_F(HandshakeTest, FailsAtMessagesBeforeItsEnd)
{
    EXPECT_EQ(take(zero + "BEGIN\r\n"), State::Failed);
}

TEST_F(HandshakeTest, FailsAtALineWithoutEnd)
{
    EXPECT_EQ(take(zero + QByteArray(Handshake::maximumLine - 1, 'A')), State::Going);
    EXPECT_EQ(take("\r\n"), State::Going) << "a line of the largest size";
    EXPECT_EQ(take(QByteArray(Handshake::maximumLine, 'A')), State::Going);
    EXPECT_EQ(take("A"), State::Failed);
    startAnew(Handshake::ofServer(1000));
    EXPECT_EQ(take(zero + QByteArray(Handshake::maximumLine, 'A') + "\r\n"), State::Failed)
        << "an end that comes too late";
}

TEST_F(HandshakeTest, FailsAtAHandshakeWithoutEnd)
{
    EXPECT_EQ(take(zero + QByteArray("WHAT\r\n").repeated(Handshake::maximumLines)), State::Going);
    EXPECT_EQ(take("W"), State::Going);
    EXPECT_EQ(take("HAT\r\n"), State::Failed);
}

TEST_F(HandshakeTest, OfAClientEndsWithTheAnswerOfTheServer)
{
    startAnew(Handshake::ofClient());
    EXPECT_EQ(take("OK 0123\r\nl"), State::Done);
    EXPECT_EQ(held, "l");
    startAnew(Handshake::ofClient());
    EXPECT_EQ(take("DATA\r\n"), State::Going) << "it has told who it is";
    EXPECT_EQ(answer, "");
    EXPECT_EQ(take("OK 0123\r\n"), State::Done);
}

TEST_F(HandshakeTest, OfAClientFailsAtAnyOtherAnswer)
{
    for (const char *const line :
         {"REJECTED EXTERNAL", "ERROR \"what\"", "ERROR", "OK", "HTTP/1.0 400", ""}) {
        SCOPED_TRACE(line);
        startAnew(Handshake::ofClient());
        EXPECT_EQ(take(QByteArray(line) + "\r\n"), State::Failed);
    }
    startAnew(Handshake::ofClient());
    EXPECT_EQ(take(QByteArray(Handshake::maximumLine + 1, 'x')), State::Failed);
}

TEST_F(HandshakeTest, OfAClientHearsThatThereIsNoRoom)
{
    startAnew(Handshake::ofClient());
    EXPECT_EQ(Handshake::refusal(), "ERROR \"no room for another stream\"\r\n");
    EXPECT_EQ(take(Handshake::refusal().chopped(1)), State::Going);
    EXPECT_EQ(take("\n"), State::Refused);
}
