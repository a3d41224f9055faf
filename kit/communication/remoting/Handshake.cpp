// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/Handshake_p.h"

#include <QUuid>

namespace dozely
{

namespace
{
constexpr QByteArrayView lineEnd("\r\n");
constexpr QByteArrayView rejection("REJECTED EXTERNAL");
constexpr QByteArrayView noRoom("no room for another stream");

QByteArray hexOf(quint32 userId)
{
    return QByteArray::number(userId).toHex(); // the decimal digits, these in hexadecimal
}

/// What a server calls itself; it means nothing beyond being there.
const QByteArray &serverIdentity()
{
    static const QByteArray identity = QUuid::createUuid().toString(QUuid::Id128).toLatin1();
    return identity;
}

QByteArray asLine(QByteArrayView words)
{
    return words.toByteArray() + lineEnd.toByteArray();
}
} // namespace

QByteArray Handshake::opening(quint32 ownUserId)
{
    return QByteArray(1, '\0') + asLine("AUTH EXTERNAL " + hexOf(ownUserId)) + asLine("BEGIN");
}

QByteArray Handshake::refusal()
{
    return asLine("ERROR \"" + noRoom.toByteArray() + '"');
}

Handshake::State Handshake::take(QByteArray *bytes, QByteArray *answer)
{
    if (m_isServer && m_lines == 0 && !bytes->isEmpty() && (!m_peer || !bytes->startsWith('\0')))
        return State::Failed; // a byte 0 comes before the first line
    for (;;) {
        const qsizetype end = bytes->indexOf(lineEnd);
        if (end < 0)
            return bytes->size() > maximumLine ? State::Failed : State::Going;
        if (end > maximumLine || ++m_lines > maximumLines)
            return State::Failed;
        const QByteArray line = bytes->left(end);
        bytes->remove(0, end + lineEnd.size());
        const State state = m_isServer ? takeFromClient(line, answer) : takeFromServer(line);
        if (state != State::Going)
            return state;
    }
}

Handshake::State Handshake::takeFromClient(QByteArray line, QByteArray *answer)
{
    if (m_lines == 1)
        line.remove(0, 1); // the byte 0
    if (line == "BEGIN")
        return m_isAccepted ? State::Done : State::Failed;
    *answer += asLine(answerTo(line));
    return State::Going;
}

QByteArray Handshake::answerTo(const QByteArray &command)
{
    const bool wasAsking = std::exchange(m_isAsking, false);
    if (m_isAccepted && command == "NEGOTIATE_UNIX_FD")
        return "ERROR \"no descriptors travel here\"";
    if (wasAsking && (command == "DATA" || command.startsWith("DATA ")))
        return answerToIdentity(command.mid(5));
    if (command.startsWith("AUTH EXTERNAL "))
        return answerToIdentity(command.mid(14));
    const bool isRefusal = command == "CANCEL" || command.startsWith("ERROR");
    if (!isRefusal && command != "AUTH" && !command.startsWith("AUTH "))
        return "ERROR \"unknown command\"";
    m_isAccepted = false;
    m_isAsking = command == "AUTH EXTERNAL";
    return m_isAsking ? "DATA" : rejection.toByteArray();
}

QByteArray Handshake::answerToIdentity(const QByteArray &claim)
{
    m_isAccepted = isPeer(claim);
    return m_isAccepted ? "OK " + serverIdentity() : rejection.toByteArray();
}

/// Who claims nothing is who the kernel says.
bool Handshake::isPeer(const QByteArray &claim) const
{
    return claim.isEmpty() || claim == hexOf(*m_peer);
}

Handshake::State Handshake::takeFromServer(const QByteArray &line)
{
    if (line.startsWith("OK "))
        return State::Done;
    if (line.startsWith("ERROR") && line.contains(noRoom))
        return State::Refused;
    // A server that asks who we are has been told already.
    return line == "DATA" ? State::Going : State::Failed;
}

} // namespace dozely
