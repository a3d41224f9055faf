// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QtEndian>

namespace dozely
{

/// Goes through the bytes of a D-Bus message, or of its body: both begin at a multiple of eight (D-Bus
/// Specification, "Marshaling"). Each operation moves on by what it took, and fails, staying anywhere, for
/// what is not there or not as it has to be.
class WireCursor
{
public:
    WireCursor(QByteArrayView bytes, bool isLittleEndian) : m_bytes(bytes), m_isLittleEndian(isLittleEndian)
    {
    }

    qsizetype position() const { return m_position; }
    bool isAtEnd() const { return m_position == m_bytes.size(); }

    /// Skips the padding, which has to be zero.
    bool align(qsizetype boundary)
    {
        for (; (m_position & (boundary - 1)) != 0; ++m_position) { // boundaries are powers of two
            if (m_position >= m_bytes.size() || m_bytes[m_position] != 0)
                return false;
        }
        return true;
    }

    template<class Number>
    bool number(Number *result)
    {
        if (!align(sizeof(Number)) || m_bytes.size() - m_position < qsizetype(sizeof(Number)))
            return false;
        const char *const at = m_bytes.data() + m_position;
        *result = m_isLittleEndian ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
        m_position += sizeof(Number);
        return true;
    }

    bool bytes(quint64 count, QByteArrayView *result)
    {
        if (count > static_cast<quint64>(m_bytes.size() - m_position))
            return false;
        *result = m_bytes.sliced(m_position, static_cast<qsizetype>(count));
        m_position += static_cast<qsizetype>(count);
        return true;
    }

    /// UTF-8 without NUL, behind its length and before a NUL.
    bool text(QByteArrayView *result)
    {
        quint32 length = 0;
        return number(&length) && bytes(length, result) && !result->contains('\0') && result->isValidUtf8() &&
               terminator();
    }

    bool signature(QByteArrayView *result)
    {
        quint8 length = 0;
        return number(&length) && bytes(length, result) && terminator(); // a NUL in it is no type
    }

private:
    bool terminator() { return m_position < m_bytes.size() && m_bytes[m_position++] == '\0'; }

    QByteArrayView m_bytes;
    qsizetype m_position = 0;
    bool m_isLittleEndian;
};

} // namespace dozely
