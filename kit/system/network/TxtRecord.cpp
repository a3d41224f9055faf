// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/TxtRecord_p.h"

#include <QSet>

#include <algorithm>

namespace dozely
{

namespace
{
bool isKey(const QByteArray &text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c <= 0x7E && c != '='; });
}

/// Calls `visit` for each whole string; false when the record ends within one.
template<class Visit>
bool eachString(const QByteArray &record, Visit visit)
{
    for (qsizetype at = 0; at < record.size();) {
        const auto length = static_cast<quint8>(record.at(at++));
        if (length > record.size() - at)
            return false;
        visit(record.mid(at, length));
        at += length;
    }
    return true;
}

/// The bytes after the key; absent when the value cannot be an entry's.
std::optional<QByteArray> tail(const QVariant &value)
{
    if (!value.isValid())
        return QByteArray();
    if (value.typeId() == QMetaType::QByteArray)
        return '=' + value.toByteArray();
    if (value.typeId() == QMetaType::QString)
        return '=' + value.toString().toUtf8();
    return std::nullopt;
}
} // namespace

std::optional<QByteArray> TxtRecord::encode(const QVariantMap &entries)
{
    QByteArrayList strings;
    QSet<QByteArray> keys;
    qsizetype size = 0;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        const QByteArray key = entry.key().toUtf8();
        const auto value = tail(entry.value());
        if (!isKey(key) || !value || keys.contains(key.toLower()) ||
            key.size() + value->size() > longestEntry)
            return std::nullopt;
        keys += key.toLower();
        strings += key + *value;
        size += 1 + strings.constLast().size();
        if (size > largestPublished)
            return std::nullopt;
    }
    return fromStrings(strings);
}

QVariantMap TxtRecord::decode(const QByteArray &record)
{
    QVariantMap entries;
    QSet<QByteArray> keys;
    for (const QByteArray &entry : strings(record)) {
        const qsizetype end = entry.indexOf('=');
        const QByteArray key = end < 0 ? entry : entry.left(end);
        if (!isKey(key) || keys.contains(key.toLower()))
            continue;
        keys += key.toLower();
        QVariant value;
        if (end >= 0)
            value = QByteArray("").append(entry.mid(end + 1)); // never null: there is a value
        entries.insert(QString::fromLatin1(key), value);
    }
    return entries;
}

QByteArrayList TxtRecord::strings(const QByteArray &record)
{
    QByteArrayList found;
    if (record.size() > largestRead)
        return found;
    eachString(record, [&found](const QByteArray &string) {
        if (!string.isEmpty())
            found += string;
    });
    return found;
}

QByteArray TxtRecord::fromStrings(const QByteArrayList &strings)
{
    QByteArray record;
    for (const QByteArray &string : strings) {
        if (string.size() <= longestEntry)
            record.append(static_cast<char>(string.size())).append(string);
    }
    return record.isEmpty() ? QByteArray(1, '\0') : record;
}

bool TxtRecord::isWellFormed(const QByteArray &record)
{
    return eachString(record, [](const QByteArray &) {});
}

} // namespace dozely
