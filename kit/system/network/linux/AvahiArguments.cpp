// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiArguments_p.h"

#include "DozelyKit/system/network/TxtRecord_p.h"

namespace dozely
{

QVariantList AvahiArguments::txtStrings(const QByteArray &record)
{
    QVariantList strings;
    for (const QByteArray &string : TxtRecord::strings(record)) {
        if (!string.startsWith('='))
            strings += string;
    }
    return strings;
}

QByteArray AvahiArguments::recordFrom(const QVariantList &strings)
{
    // The daemon tells them in the opposite order of that in the record, where the first of like keys counts.
    QByteArrayList list;
    qsizetype size = 0;
    for (auto string = strings.crbegin(); string != strings.crend(); ++string) {
        list += string->toByteArray();
        size += 1 + list.constLast().size();
        if (size > TxtRecord::largestRead)
            return TxtRecord::fromStrings({});
    }
    return TxtRecord::fromStrings(list);
}

Result<QString> AvahiArguments::textIn(const BusConnection::Reply &reply)
{
    if (!reply)
        return reply.error();
    const QString text = reply->value(0).toString();
    if (text.isEmpty())
        return Error{"the daemon's answer is empty"};
    return text;
}

NetServices::Problem AvahiArguments::problemOf(const Error &error)
{
    if (error.name == "org.freedesktop.Avahi.CollisionError")
        return NetServices::Problem::Collision;
    // Whatever else the daemon itself says is about what it was told; other errors come from the bus.
    return error.name.startsWith("org.freedesktop.Avahi.") ? NetServices::Problem::BadArgument
                                                           : NetServices::Problem::Unavailable;
}

} // namespace dozely
