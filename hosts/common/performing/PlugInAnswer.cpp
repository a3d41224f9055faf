// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlugInAnswer.h"

#include "DozelyKit/core/files/PropertyList.h"

using namespace dozely;

namespace
{
constexpr QLatin1StringView wakeUpKey("Needs Wake Up");
constexpr QLatin1StringView startupKey("Needs Startup");
constexpr QLatin1StringView timeOutKey("Time Out");
constexpr QLatin1StringView anticipationKey("Time Before Self Anticipation");
constexpr QLatin1StringView nameKey("Plugin Name");
constexpr QLatin1StringView handsOverKey("Hands Over Itself");
constexpr QLatin1StringView announcesKey("Announces Itself");
constexpr QLatin1StringView whyKey("Why None");

/// Four bytes each at most, so that all of it is one packet.
constexpr qsizetype longestText = PlugInAnswer::mostBytes / 8;
} // namespace

QByteArray PlugInAnswer::toPacket(const Result<PlugInAnswer> &answer)
{
    const QVariantMap map = answer ? QVariantMap{{wakeUpKey, answer->needsWakeUp},
                                                 {startupKey, answer->needsStartup},
                                                 {timeOutKey, static_cast<qint64>(answer->timeOut)},
                                                 {anticipationKey, answer->timeBeforeSelfAnticipation},
                                                 {nameKey, answer->pluginName.left(longestText)},
                                                 {handsOverKey, answer->handsOverItself},
                                                 {announcesKey, answer->announcesItself}}
                                   : QVariantMap{{whyKey, answer.error().text.left(longestText)}};
    const QByteArray packet = PropertyList::toData(map, PropertyList::Format::Binary);
    return packet.isEmpty() ? toPacket(Error{"what its plug-in says is no text"}) : packet;
}

Result<PlugInAnswer> PlugInAnswer::fromPacket(const QByteArray &packet)
{
    const Error none{"what answered is no performer"};
    const auto list = PropertyList::fromData(packet);
    if (!list)
        return none;
    const QVariantMap map = list->toMap();
    if (map.value(whyKey).typeId() == QMetaType::QString)
        return Error{map.value(whyKey).toString()};
    for (const auto &key : {wakeUpKey, startupKey, handsOverKey, announcesKey}) {
        if (map.value(key).typeId() != QMetaType::Bool)
            return none;
    }
    const QVariant timeOut = map.value(timeOutKey);
    const QVariant anticipation = map.value(anticipationKey);
    if (timeOut.typeId() != QMetaType::LongLong || anticipation.typeId() != QMetaType::LongLong ||
        timeOut.toLongLong() != static_cast<qint32>(timeOut.toLongLong()) ||
        map.value(nameKey).typeId() != QMetaType::QString)
        return none;
    return PlugInAnswer{map.value(wakeUpKey).toBool(),
                        map.value(startupKey).toBool(),
                        static_cast<qint32>(timeOut.toLongLong()),
                        anticipation.toLongLong(),
                        map.value(nameKey).toString(),
                        map.value(handsOverKey).toBool(),
                        map.value(announcesKey).toBool()};
}
