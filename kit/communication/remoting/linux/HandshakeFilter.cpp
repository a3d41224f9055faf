// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/HandshakeFilter_p.h"

#include <unistd.h>

namespace dozely
{

QByteArray HandshakeFilter::withOurIdentity(const QByteArray &command, const QByteArray &claim) const
{
    // The user id in decimal digits, these in hexadecimal.
    const bool isTrue = claim == QByteArray::number(*m_peer).toHex();
    constexpr auto nobody = static_cast<uid_t>(-2); // whom sd-bus rejects, since that is not us
    return command + QByteArray::number(isTrue ? ::geteuid() : nobody).toHex() + "\r\n";
}

bool HandshakeFilter::take(char byte, QByteArray *passed)
{
    m_line += byte;
    const bool isFirst = m_isClient && m_lines == 0;
    m_hasFailed = m_hasFailed || (m_isClient && !m_peer) || m_line.size() > maximumLine ||
                  m_lines >= maximumLines || (isFirst && m_line.at(0) != '\0');
    if (m_hasFailed || !m_line.endsWith("\r\n"))
        return false;
    ++m_lines;
    const QByteArray head(isFirst ? 1 : 0, '\0');
    const QByteArray words = m_line.sliced(head.size()).chopped(2);
    *passed = m_line;
    if (m_isClient && words.startsWith("AUTH EXTERNAL "))
        *passed = withOurIdentity(head + "AUTH EXTERNAL ", words.mid(14));
    else if (m_isClient && words.startsWith("DATA "))
        *passed = withOurIdentity(head + "DATA ", words.mid(5));
    m_isDone = words == m_last || words.startsWith(m_last + ' ');
    m_line.clear();
    return true;
}

} // namespace dozely
