// SPDX-License-Identifier: MIT
#include "hosts/admin/Door.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminText.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/SchedulerNames.h"

#include <algorithm>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds machineTime(5);
constexpr std::chrono::minutes personTime(11);

/// Null where there is no bus.
BusConnection *bus()
{
    static const auto opened = BusConnection::open(BusConnection::Bus::System);
    return opened ? opened->get() : nullptr;
}

[[noreturn]] void fail(const Error &error)
{
    throw AdminError(error.name == SchedulerNames::notAllowed ? ExitStatus::NotPermitted : ExitStatus::Failed,
                     AdminText::answer(error));
}

QVariant ask(const char *method, const QByteArray &signature, const QVariantList &arguments)
{
    using namespace SchedulerNames;
    const auto reply =
        bus()->call({name, path, interface, method}, signature, arguments, QDeadlineTimer(personTime));
    if (!reply)
        fail(reply.error());
    return reply->value(0);
}

/// What Add and Change take of a schedule. A date within parameters would arrive as a text.
QVariantMap wishFor(const Schedule &schedule)
{
    QVariantMap wish = ScheduleDictionary::of(schedule);
    wish.remove("identifier");
    if (schedule.recurrence) {
        QVariantMap repeats = wish["repeats"].toMap();
        repeats.remove("inWords");
        wish.insert("repeats", repeats);
    }
    return wish;
}

void requireThatItTravels(const QVariantMap &parameters, const QVariantMap &former)
{
    for (auto each = parameters.cbegin(); each != parameters.cend(); ++each) {
        const QVariantMap one{{each.key(), *each}};
        if (former.value(each.key()) != *each && ScheduleDictionary::parameters(one) != one)
            throw AdminError(ExitStatus::NotPermitted,
                             AdminText::tr("The parameter \"%1\" holds a date, which only root can store.")
                                 .arg(each.key()));
    }
}

QString textOf(const std::optional<QDateTime> &date)
{
    return date ? ScheduleDictionary::textOf(*date) : QString();
}

QDateTime dateIn(const QVariantMap &outcome, const QString &key)
{
    return ScheduleDictionary::dateOf(outcome.value(key).toString()).value_or(QDateTime());
}

std::optional<qint64> numberIn(const QVariantMap &outcome, const QString &key)
{
    return outcome.contains(key) ? std::optional(outcome.value(key).toLongLong()) : std::nullopt;
}
} // namespace

bool Door::isThere()
{
    const bool isRelocated = RootFolder::join("/x") != "/x";
    if ((isRelocated && !qEnvironmentVariableIsSet("DBUS_SYSTEM_BUS_ADDRESS")) || !bus())
        return false;
    return bus()
        ->call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner"}, "s",
               {QString(SchedulerNames::name)}, QDeadlineTimer(machineTime))
        .ok();
}

QString Door::add(const Schedule &schedule)
{
    requireThatItTravels(schedule.parameters, {});
    QVariantMap wish = wishFor(schedule);
    wish.insert("anyway", true); // it has been looked at, with the caller's own eyes
    return ask("Add", "a{sv}", {wish}).toString();
}

void Door::change(const Schedule &before, const Schedule &after)
{
    requireThatItTravels(after.parameters, before.parameters);
    const QVariantMap former = wishFor(before);
    QVariantMap changes = wishFor(after);
    changes.removeIf([&](const auto &each) { return former.value(each.key()) == each.value(); });
    for (const QString key : {"missed", "overlap", "after"}) {
        if (former.contains(key) && !wishFor(after).contains(key))
            changes.insert(key, QString(""));
    }
    if (before.recurrence && !after.recurrence) {
        changes.insert("repeats", QVariantMap());
        changes.insert("date", ScheduleDictionary::textOf(after.date));
        changes.remove("overlap");
    }
    changes.insert("revision", ScheduleDictionary::revisionOf(before));
    changes.insert("anyway", true);
    ask("Change", "sa{sv}", {before.identifier, changes});
}

void Door::remove(const QString &identifier)
{
    ask("Remove", "s", {identifier});
}

void Door::skip(const QString &identifier, const std::optional<QDateTime> &date)
{
    ask("Skip", "ss", {identifier, textOf(date)});
}

void Door::postpone(const QString &identifier, const std::optional<QDateTime> &date,
                    std::chrono::seconds delay)
{
    ask("Postpone", "ssu", {identifier, textOf(date), static_cast<quint32>(delay.count())});
}

QList<RecordedOccurrence> Door::history(const std::optional<QString> &identifier, qsizetype most)
{
    const quint32 number = static_cast<quint32>(std::min<qsizetype>(most, 1000));
    QList<RecordedOccurrence> occurrences;
    for (const QVariant &each : ask("History", "su", {identifier.value_or(QString("")), number}).toList()) {
        const QVariantMap told = each.toMap();
        const RecordedOutcome outcome{told["state"].toString(),   dateIn(told, "begun"),
                                      numberIn(told, "lateness"), numberIn(told, "exitStatus"),
                                      dateIn(told, "ended"),      told["failure"].toString()};
        occurrences += RecordedOccurrence{told["identifier"].toString(),
                                          dateIn(told, "date"),
                                          outcome,
                                          dateIn(told, "postponedTo"),
                                          dateIn(told, "first"),
                                          numberIn(told, "count"),
                                          told.value("isCountExact", true).toBool()};
    }
    return occurrences;
}
