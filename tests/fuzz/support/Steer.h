// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QVariant>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

/// An input of a fuzzer, read as decisions: each question takes some bytes from its front, and is answered
/// with nothing (zero, false, empty) once they are used up. So a changed byte changes one decision, and every
/// input means something. Two questions never stand in one expression unless their order is settled:
/// compilers differ, and a finding is to mean the same to all.
class Steer
{
public:
    Steer(const uint8_t *data, size_t size)
        : m_bytes(QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)))
    {
    }

    bool isUsedUp() const { return m_at >= m_bytes.size(); }

    uint8_t byte() { return isUsedUp() ? uint8_t(0) : static_cast<uint8_t>(m_bytes.at(m_at++)); }

    /// One of 0 to `count` - 1; `count` is at most 256.
    int below(int count) { return byte() % count; }

    /// One of 0 to `count` - 1, whatever `count`.
    qsizetype index(qsizetype count)
    {
        qsizetype any = byte();
        any = any << 8 | byte();
        any = any << 8 | byte();
        return count > 0 ? any % count : 0;
    }

    bool flag() { return (byte() & 1) != 0; }

    template<class Value>
    Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(static_cast<int>(values.size()))];
    }

    /// As it stands in the input, up to `most` bytes.
    QByteArray bytes(int most = 32)
    {
        const int size = below(most + 1);
        const QByteArray taken = m_bytes.mid(m_at, size);
        m_at += taken.size();
        return QByteArray(taken.constData(), taken.size()); // a copy, whose end is its own
    }

    QByteArray rest()
    {
        const QByteArray taken = m_bytes.mid(m_at);
        m_at = m_bytes.size();
        return QByteArray(taken.constData(), taken.size());
    }

    /// A small number, one at an edge, or any.
    qint64 number()
    {
        static constexpr qint64 edges[] = {-1,
                                           0x7fff,
                                           0x7fffffff,
                                           0x80000000,
                                           0xffffffff,
                                           0x100000000,
                                           std::numeric_limits<qint64>::max(),
                                           std::numeric_limits<qint64>::min()};
        const int kind = below(3);
        if (kind == 0)
            return below(256);
        if (kind == 1)
            return edges[below(std::size(edges))];
        quint64 any = 0;
        for (int i = 0; i < 8; ++i)
            any = any << 8 | byte();
        return static_cast<qint64>(any);
    }

    /// Mostly plain, sometimes with what strangers put into texts: line ends, halves of characters, NUL.
    QString text()
    {
        const int kind = below(8);
        if (kind == 0)
            return {};
        if (kind == 1) {
            const QByteArray units = bytes(16);
            return QString(reinterpret_cast<const QChar *>(units.constData()), units.size() / 2);
        }
        if (kind == 2)
            return QString(8 * byte(), QChar('x')).append(QString::fromUtf8(bytes()));
        return QString::fromUtf8(bytes());
    }

    /// Around `now`, at the edges of what formats hold, or any.
    QDateTime date(const QDateTime &now)
    {
        switch (below(4)) {
        case 0:
            return now.addSecs(byte() - 128);
        case 1:
            return now.addMSecs(number() % 1'000'000'000'000);
        case 2: {
            const QDate day{oneOf({1, 1904, 1932, 1969, 1970, 2001, 2038, 9999}), 1 + below(12),
                            1 + below(28)};
            const QTime time{below(24), below(60), below(60), below(2) * 500};
            return QDateTime(day, time, Qt::UTC);
        }
        default:
            return QDateTime::fromMSecsSinceEpoch(flag() ? number() : number() / 4096, Qt::UTC);
        }
    }

    /// Anything that a property list holds.
    QVariant value(const QDateTime &now, int depth = 0)
    {
        switch (below(depth < 6 ? 9 : 7)) {
        case 0:
            return text();
        case 1:
            return flag();
        case 2:
            return number();
        case 3:
            return static_cast<double>(number()) / 3;
        case 4:
            return bytes();
        case 5:
            return date(now);
        case 6:
            return static_cast<quint64>(number());
        case 7: {
            QVariantList list;
            for (int left = below(4); left > 0; --left)
                list += value(now, depth + 1);
            return list;
        }
        default:
            return dictionary(now, depth + 1);
        }
    }

    QVariantMap dictionary(const QDateTime &now, int depth = 0)
    {
        QVariantMap map;
        for (int left = below(4); left > 0; --left) {
            const QString key = text();
            map.insert(key, value(now, depth));
        }
        return map;
    }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
};
