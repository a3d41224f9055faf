// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Puts a D-Bus message together piece by piece, in either byte order and with any fault that a test wants.
class WireEncoder
{
public:
    explicit WireEncoder(bool isLittleEndian = true) : m_isLittleEndian(isLittleEndian) {}

    WireEncoder &align(qsizetype boundary)
    {
        m_bytes.append((boundary - m_bytes.size() % boundary) % boundary, '\0');
        return *this;
    }
    WireEncoder &raw(const QByteArray &bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    WireEncoder &number(quint64 value, int size)
    {
        align(size);
        for (int i = 0; i < size; ++i)
            m_bytes += static_cast<char>(value >> 8 * (m_isLittleEndian ? i : size - 1 - i));
        return *this;
    }
    WireEncoder &u32(quint32 value) { return number(value, 4); }
    WireEncoder &text(const QByteArray &text)
    {
        return u32(static_cast<quint32>(text.size())).raw(text).raw(QByteArray(1, '\0'));
    }
    WireEncoder &signature(const QByteArray &signature)
    {
        return number(static_cast<quint64>(signature.size()), 1).raw(signature).raw(QByteArray(1, '\0'));
    }

    /// The beginning of a field of a header.
    WireEncoder &field(quint8 code, const QByteArray &type)
    {
        return align(8).number(code, 1).signature(type);
    }

    QByteArray bytes() const { return m_bytes; }

    /// The message with these fields and this body.
    static QByteArray message(char type, const QByteArray &fields, const QByteArray &body = {},
                              bool isLittleEndian = true, char flags = 0)
    {
        WireEncoder encoder(isLittleEndian);
        encoder.raw(QByteArray(1, isLittleEndian ? 'l' : 'B')).raw(QByteArray(1, type));
        encoder.raw(QByteArray(1, flags)).raw(QByteArray(1, '\1'));
        encoder.u32(static_cast<quint32>(body.size())).u32(7).u32(static_cast<quint32>(fields.size()));
        return encoder.raw(fields).align(8).raw(body).bytes();
    }

private:
    QByteArray m_bytes;
    bool m_isLittleEndian;
};
