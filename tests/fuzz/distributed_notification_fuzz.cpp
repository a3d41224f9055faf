// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedMessage_p.h"
#include "DozelyKit/core/broadcast/linux/DistributedQuota_p.h"
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

#include <QHash>

using namespace dozely;

namespace
{
/// Anything that a signal on the bus carries: more than a notification holds, and neither dates nor nothing.
QVariant someArgument(Steer &steer, int depth = 0)
{
    switch (steer.below(depth < 12 ? 14 : 11)) {
    case 0:
        return steer.text();
    case 1:
        return steer.flag();
    case 2:
        return QVariant::fromValue(static_cast<uchar>(steer.byte()));
    case 3:
        return QVariant::fromValue(static_cast<short>(steer.number()));
    case 4:
        return QVariant::fromValue(static_cast<ushort>(steer.number()));
    case 5:
        return static_cast<int>(steer.number());
    case 6:
        return static_cast<uint>(steer.number());
    case 7:
        return steer.number();
    case 8:
        return static_cast<quint64>(steer.number());
    case 9:
        return static_cast<double>(steer.number()) / 3;
    case 10:
        return steer.flag() ? QVariant(steer.bytes()) : QVariant::fromValue(BusDescriptor());
    case 11: {
        QVariantList list;
        for (int left = steer.below(4); left > 0; --left)
            list += someArgument(steer, depth + 1);
        return list;
    }
    default: {
        QVariantMap map;
        for (int left = steer.below(4); left > 0; --left) {
            const QString key = steer.text();
            map.insert(key, someArgument(steer, depth + 1));
        }
        return map;
    }
    }
}

/// Whether a value is made of nothing but what a notification holds.
bool isOurs(const QVariant &value, int depth = 0)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QDateTime:
        return true;
    case QMetaType::QVariantList:
        for (const QVariant &item : value.toList()) {
            if (!isOurs(item, depth + 1))
                return false;
        }
        return depth < CborBlock::maximumDepth;
    case QMetaType::QVariantMap:
        for (const QVariant &item : value.toMap()) {
            if (!isOurs(item, depth + 1))
                return false;
        }
        return depth < CborBlock::maximumDepth;
    default:
        return false;
    }
}

void checkRead(const QVariantList &arguments)
{
    const auto posted = DistributedMessage::read(arguments);
    if (!posted)
        return;
    const NSNotification &notification = posted->notification;
    REQUIRE(!notification.name().isEmpty() && notification.name() == arguments.at(0).toString());
    REQUIRE(!notification.object().isValid() || notification.object().typeId() == QMetaType::QString);
    REQUIRE(isOurs(notification.userInfo()));
    REQUIRE(DistributedMessage::sizeOf(notification) <= DistributedMessage::largest);
    REQUIRE(!posted->sender); // the kernel's word, never the message's
    // What was heard can be posted, and is heard as the same, unless as a block it is too large.
    const auto message = DistributedMessage::from(notification, posted->deliverImmediately);
    if (!message)
        return;
    const auto again = DistributedMessage::read(message->arguments);
    REQUIRE(again && again->deliverImmediately == posted->deliverImmediately);
    REQUIRE(again->notification.name() == notification.name());
    // Compared as they travel: half a character arrives as a stand-in.
    const auto content = [](const NSNotification &each) {
        const auto block = CborBlock::encode(QVariantList{each.object(), each.userInfo()});
        return block ? *block : QByteArray();
    };
    const auto travelled = CborBlock::decode(content(notification));
    REQUIRE(!travelled || content(again->notification) == *CborBlock::encode(*travelled));
}

/// However many users post however fast, nobody is heard more often than he may be.
void checkQuota(Steer &steer, StandingClock &clock)
{
    DistributedQuota quota;
    QHash<int, int> heard;
    const auto start = clock.steady;
    while (!steer.isUsedUp()) {
        const int user = steer.below(4);
        for (int left = steer.byte(); left > 0; --left) {
            if (quota.take(user == 3 ? std::nullopt : std::optional(static_cast<quint32>(user))))
                ++heard[user];
        }
        clock.steady += std::chrono::milliseconds(steer.byte() * 8);
    }
    const double seconds = std::chrono::duration<double>(clock.steady - start).count();
    for (const int count : std::as_const(heard))
        REQUIRE(count <= DistributedQuota::burst + DistributedQuota::perSecond * seconds + 1);
}
} // namespace

/// What anybody posts on the bus as a distributed notification: the values of a signal (first byte 0), the
/// same with a block (1), a block of any bytes (2), and how often (3).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    switch (steer.below(4)) {
    case 0: {
        QVariantList arguments;
        if (steer.flag())
            arguments = {steer.text(), steer.text(), someArgument(steer), static_cast<uint>(steer.number())};
        else
            for (int left = steer.below(6); left > 0; --left)
                arguments += someArgument(steer);
        checkRead(arguments);
        break;
    }
    case 1: {
        const QString name = steer.text();
        const QVariant object = steer.flag() ? QVariant(steer.text()) : QVariant();
        const auto block = CborBlock::encode(QVariantList{object, steer.value(system.now())});
        if (block)
            checkRead({name, *block, static_cast<uint>(steer.number())});
        break;
    }
    case 2:
        checkRead({QString("name"), steer.rest(), 0U});
        break;
    default:
        checkQuota(steer, *system.clock);
    }
    return 0;
}
