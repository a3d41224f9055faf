// SPDX-License-Identifier: MIT
#include "hosts/common/bus/WishedRecurrence.h"

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/calendar/WallTimeSeries.h"

#include "DozelyKit/core/log/LogLabel.h"

#include <QHash>

using namespace dozely;

namespace
{
/// Of the bus, and of the store.
const QHash<QString, QString> keys{{"rule", "Rule"},
                                   {"localStart", "Local Start"},
                                   {"extraDates", "Extra Dates"},
                                   {"excludedDates", "Excluded Dates"}};

/// In the store's words; lists are lists there, of whatever type they came. Its own reader is as strict about
/// what they hold.
Result<QVariantMap> inStoresWords(const QVariantMap &repeats, const QDateTime &notBefore,
                                  const QTimeZone &zone)
{
    QVariantMap words;
    for (auto each = repeats.cbegin(); each != repeats.cend(); ++each) {
        const auto key = keys.constFind(each.key());
        if (key == keys.cend())
            return Error{QString("\"repeats\" has no \"%1\".").arg(logLabel(each.key()))};
        const bool isList =
            each->typeId() == QMetaType::QVariantList || each->typeId() == QMetaType::QStringList;
        words.insert(*key, isList ? QVariant(each->toList()) : *each);
    }
    if (!words.contains("Local Start"))
        words.insert("Local Start", WallTime::of(notBefore.toTimeZone(zone)).toString());
    return words;
}
} // namespace

Result<void> WishedRecurrence::apply(const QVariantMap &repeats, const QDateTime &notBefore,
                                     Schedule &schedule)
{
    const SharedRecurrence former = schedule.recurrence;
    if (repeats.isEmpty()) {
        schedule.recurrence.reset();
        schedule.overlapPolicy.reset();
        return {};
    }
    schedule.recurrence = Recurrence(); // by which its zone is that of what repeats
    const auto words = inStoresWords(repeats, notBefore, schedule.zone());
    if (!words)
        return words.error();
    auto recurrence = Recurrence::fromDictionary(*words);
    if (!recurrence)
        return Error{QString("It cannot repeat so: %1.").arg(recurrence.error().text)};
    recurrence->otherKeys = former.valueOrEmpty().otherKeys;
    if (former && *former == *recurrence) {
        schedule.recurrence = former;
        return {};
    }
    schedule.recurrence = *recurrence;
    return beginAnew(notBefore, schedule);
}

Result<void> WishedRecurrence::beginAnew(const QDateTime &notBefore, Schedule &schedule)
{
    const auto begun = begunAnew(*schedule.recurrence, schedule.zone(), notBefore);
    if (!begun)
        return Error{QString("It cannot repeat so: %1.").arg(begun.error().text)};
    const auto series = OccurrenceSeries::of(*begun, schedule.zone());
    const auto first = series ? series->first() : std::nullopt;
    if (!first)
        return Error{"It cannot repeat so: with these exceptions nothing is left of it."};
    schedule.recurrence = *begun;
    schedule.date = *first;
    return {};
}
