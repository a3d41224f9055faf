// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedMessage_p.h"

#include "DozelyKit/core/broadcast/NSDistributedNotificationCenter.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"

#include <QDateTime>

#include <algorithm>

namespace dozely
{

namespace
{
// A container and the variant around it are two levels of the message, of which the bus layer takes 32.
constexpr int plainDepth = 10;

constexpr qsizetype perValue = 8;

/// Whether the signal can carry the value so that it arrives as the same. A date cannot: the bus layer would
/// read a list.
bool isPlain(const QVariant &value, int depth)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QByteArray:
        return true;
    case QMetaType::QString:
        return CborBlock::isPlainText(value.toString());
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        return depth < plainDepth && std::all_of(list.begin(), list.end(), [depth](const QVariant &v) {
                   return isPlain(v, depth + 1);
               });
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
            if (!CborBlock::isPlainText(entry.key()) || !isPlain(entry.value(), depth + 1))
                return false;
        }
        return depth < plainDepth;
    }
    default:
        return false;
    }
}

/// Adds to `size` until that is more than a message may hold.
void measure(const QVariant &value, qsizetype &size)
{
    size += perValue;
    if (size > DistributedMessage::largest)
        return;
    switch (value.typeId()) {
    case QMetaType::QString:
        size += value.toString().toUtf8().size();
        return;
    case QMetaType::QByteArray:
        size += value.toByteArray().size();
        return;
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        for (const QVariant &each : list)
            measure(each, size);
        return;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        for (auto entry = map.cbegin(); entry != map.cend() && size <= DistributedMessage::largest; ++entry) {
            size += entry.key().toUtf8().size();
            measure(entry.value(), size);
        }
        return;
    }
    default:
        return;
    }
}

/// Makes what others wrote the values that a notification holds; false when it holds anything else.
bool normalise(QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return true;
    case QMetaType::UChar:
    case QMetaType::UShort:
        value = value.toUInt();
        return true;
    case QMetaType::Short:
        value = value.toInt();
        return true;
    case QMetaType::QVariantList: {
        QVariantList list = value.toList();
        const bool isOurs = std::all_of(list.begin(), list.end(), normalise);
        value = list;
        return isOurs;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        const bool isOurs = std::all_of(map.begin(), map.end(), normalise);
        value = map;
        return isOurs;
    }
    default:
        return false; // a descriptor, for one
    }
}

bool isText(const QVariant &value)
{
    return value.typeId() == QMetaType::QString;
}

bool isDictionary(const QVariant &value)
{
    return value.typeId() == QMetaType::QVariantMap;
}

/// The notification whose object and user information are in the block.
std::optional<NSNotification> readBlock(const QString &name, const QByteArray &block)
{
    if (block.size() > DistributedMessage::largest)
        return std::nullopt;
    const auto parts = CborBlock::decode(block);
    if (!parts)
        return std::nullopt;
    const QVariantList list = parts->toList();
    if (list.size() != 2 || (list.at(0).isValid() && !isText(list.at(0))) || !isDictionary(list.at(1)))
        return std::nullopt;
    return NSNotification(name, list.at(0), list.at(1).toMap());
}

std::optional<NSNotification> readPlain(const QString &name, const QVariant &object, QVariant userInfo)
{
    if (!isText(object) || !isDictionary(userInfo) || !normalise(userInfo))
        return std::nullopt;
    return NSNotification(name, object, userInfo.toMap());
}

Error tooLarge()
{
    return {QString("it is larger than %1 bytes").arg(DistributedMessage::largest)};
}
} // namespace

qsizetype DistributedMessage::sizeOf(const NSNotification &notification)
{
    qsizetype size = 0;
    measure(notification.name(), size);
    measure(notification.object(), size);
    measure(notification.userInfo(), size);
    return size;
}

Result<DistributedMessage> DistributedMessage::from(const NSNotification &notification,
                                                    bool deliverImmediately)
{
    const QString name = notification.name();
    if (name.isEmpty() || !CborBlock::isPlainText(name))
        return Error{"a name must be a text without NUL and noncharacters"};
    const quint32 options = deliverImmediately ? NSDistributedNotificationDeliverImmediately : 0U;
    DistributedMessage message;
    if (isText(notification.object()) && isPlain(notification.object(), 0) &&
        isPlain(notification.userInfo(), 0)) {
        message = {"ssa{sv}u", {name, notification.object(), notification.userInfo(), options}};
    } else {
        const auto block = CborBlock::encode(QVariantList{notification.object(), notification.userInfo()});
        if (!block)
            return block.error();
        if (block->size() > largest)
            return tooLarge();
        message = {"sayu", {name, *block, options}};
    }
    if (sizeOf(notification) > largest)
        return tooLarge();
    return message;
}

std::optional<DistributedNotifications::Posted> DistributedMessage::read(const QVariantList &arguments)
{
    const QVariant name = arguments.value(0);
    if (!isText(name) || name.toString().isEmpty() || arguments.size() < 2)
        return std::nullopt;
    const bool isBlock = arguments.at(1).typeId() == QMetaType::QByteArray;
    const qsizetype parts = isBlock ? 2 : 3;
    // The options may be left out by who posts by hand.
    if (arguments.size() < parts || arguments.size() > parts + 1)
        return std::nullopt;
    const QVariant options = arguments.value(parts, 0U);
    if (options.typeId() != QMetaType::UInt)
        return std::nullopt;
    const auto notification = isBlock ? readBlock(name.toString(), arguments.at(1).toByteArray())
                                      : readPlain(name.toString(), arguments.at(1), arguments.at(2));
    if (!notification || sizeOf(*notification) > largest)
        return std::nullopt;
    return DistributedNotifications::Posted{
        *notification, (options.toUInt() & NSDistributedNotificationDeliverImmediately) != 0, std::nullopt};
}

} // namespace dozely
