// SPDX-License-Identifier: MIT
#include "hosts/daemon/ParametersDigest.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QCryptographicHash>
#include <QDateTime>

#include <algorithm>
#include <cstring>

using namespace dozely;

namespace
{
/// Written one after the other, each with its length, so that no two values read the same.
class Writer
{
public:
    void add(const QVariant &value)
    {
        const int type = value.typeId();
        append(type);
        switch (type) {
        case QMetaType::QVariantMap:
            return add(*static_cast<const QVariantMap *>(value.constData()));
        case QMetaType::QVariantList: {
            const auto &list = *static_cast<const QVariantList *>(value.constData());
            append(list.size());
            for (const QVariant &element : list)
                add(element);
            return;
        }
        case QMetaType::QString:
            return add(*static_cast<const QString *>(value.constData()));
        case QMetaType::QByteArray:
            return add(value.toByteArray());
        case QMetaType::QDateTime:
            return append(value.toDateTime().toMSecsSinceEpoch());
        case QMetaType::Double:
            return append(value.toDouble());
        default:
            if (value.metaType() == QMetaType::fromType<PropertyList::DamagedDate>())
                return add(value.value<PropertyList::DamagedDate>().content);
            return append(value.toULongLong()); // a boolean, or an integer
        }
    }
    void add(const QVariantMap &map)
    {
        append(map.size());
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
            add(entry.key());
            add(entry.value());
        }
    }
    const QByteArray &written() const { return m_written; }

private:
    void add(const QString &text)
    {
        append(text.size());
        m_written.append(reinterpret_cast<const char *>(text.constData()),
                         text.size() * static_cast<qsizetype>(sizeof(QChar)));
    }
    void add(const QByteArray &data)
    {
        append(data.size());
        m_written.append(data);
    }
    template<class Number>
    void append(Number number)
    {
        m_written.append(reinterpret_cast<const char *>(&number), sizeof number);
    }

    QByteArray m_written;
};
} // namespace

ParametersDigest ParametersDigest::of(const QVariantMap &parameters)
{
    Writer writer;
    writer.add(parameters);
    const QByteArray hash = QCryptographicHash::hash(writer.written(), QCryptographicHash::Blake2s_128);
    ParametersDigest digest;
    std::copy_n(hash.cbegin(), digest.bytes.size(), digest.bytes.begin());
    return digest;
}

size_t qHash(const ParametersDigest &digest, size_t seed)
{
    size_t part = 0;
    std::memcpy(&part, digest.bytes.data(), sizeof part);
    return part ^ seed;
}
