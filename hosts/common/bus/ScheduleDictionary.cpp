// SPDX-License-Identifier: MIT
#include "hosts/common/bus/ScheduleDictionary.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/common/calendar/RuleWords.h"

#include <QCryptographicHash>
#include <QRegularExpression>

using namespace dozely;

namespace
{
constexpr int depth = PropertyList::maximumDepth;

QVariant travelling(const QVariant &value, int left)
{
    if (left == 0)
        return {};
    if (value.typeId() == QMetaType::QDateTime)
        return ScheduleDictionary::textOf(value.toDateTime());
    if (value.typeId() == QMetaType::QVariantMap) {
        QVariantMap map = value.toMap();
        for (QVariant &each : map)
            each = travelling(each, left - 1);
        return map;
    }
    if (value.typeId() == QMetaType::QVariantList) {
        QVariantList list = value.toList();
        for (QVariant &each : list)
            each = travelling(each, left - 1);
        return list;
    }
    return value;
}

QStringList texts(const QList<WallTime> &dates)
{
    QStringList texts;
    for (const WallTime &date : dates)
        texts += date.toString();
    return texts;
}

QVariantMap repetition(const Recurrence &recurrence)
{
    return {{"rule", recurrence.rule},
            {"localStart", recurrence.localStart.toString()},
            {"extraDates", texts(recurrence.extraDates)},
            {"excludedDates", texts(recurrence.excludedDates)},
            {"inWords", RuleWords::of(recurrence)}};
}

template<class Policy>
void insertName(QVariantMap &dictionary, const QString &key, const std::optional<Policy> &policy)
{
    if (policy)
        dictionary.insert(key, SchedulePolicies::nameOf(*policy));
}
} // namespace

QVariantMap ScheduleDictionary::of(const Schedule &schedule)
{
    QVariantMap dictionary{{"identifier", schedule.identifier},
                           {"name", schedule.name},
                           {"isEnabled", schedule.isEnabled},
                           {"bundlePath", schedule.bundlePath},
                           {"parameters", parameters(schedule.parameters)},
                           {"date", textOf(schedule.date)},
                           {"staysWhenOver", schedule.staysWhenOver}};
    const bool isOnceInUtc = schedule.timeZone.isEmpty() && !schedule.recurrence;
    dictionary.insert("timeZone", isOnceInUtc ? QString("UTC") : schedule.timeZone);
    if (schedule.owner)
        dictionary.insert("owner", *schedule.owner);
    if (schedule.recurrence)
        dictionary.insert("repeats", repetition(*schedule.recurrence));
    insertName(dictionary, "missed", schedule.missedPolicy);
    if (schedule.missedLimit)
        dictionary.insert("missedLimit", static_cast<quint64>(schedule.missedLimit->count()));
    insertName(dictionary, "overlap", schedule.overlapPolicy);
    insertName(dictionary, "after", schedule.afterAction);
    return dictionary;
}

QVariantMap ScheduleDictionary::parameters(const QVariantMap &parameters)
{
    return travelling(parameters, depth).toMap();
}

QString ScheduleDictionary::textOf(const QDateTime &date)
{
    return date.isValid() ? date.toUTC().toString(Qt::ISODate) : QString();
}

std::optional<QDateTime> ScheduleDictionary::dateOf(const QString &text)
{
    static const QRegularExpression form(
        R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d(\.\d{1,9})?(Z|[+-]\d\d:\d\d)\z)");
    constexpr qsizetype longest = 40;
    if (text.size() > longest || !form.match(text).hasMatch())
        return {};
    const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!date.isValid())
        return {};
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    const qint64 over = ((milliseconds % 1000) + 1000) % 1000;
    const QDateTime whole =
        QDateTime::fromMSecsSinceEpoch(over ? milliseconds + 1000 - over : milliseconds, Qt::UTC);
    const int year = whole.date().year();
    return year >= 1 && year <= 9999 ? std::optional(whole) : std::nullopt;
}

QString ScheduleDictionary::revisionOf(const Schedule &schedule)
{
    constexpr int digits = 16;
    const QByteArray entry =
        PropertyList::toData(schedule.toEntry(), PropertyList::Format::Xml, PropertyList::ofTheSystem);
    return QString::fromLatin1(
        QCryptographicHash::hash(entry, QCryptographicHash::Sha256).toHex().left(digits));
}
