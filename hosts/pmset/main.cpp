// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/RelocatedTool.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <cstdio>

using namespace dozely;

namespace
{
constexpr int success = 0;
constexpr int failed = 1;
constexpr int notPermitted = 3;

constexpr char ownName[] = "pmset";
constexpr char dateFormat[] = "MM/dd/yy HH:mm:ss";

using Event = PowerEventScheduler::Event;

PowerEventScheduler &scheduler()
{
    return *Port<PowerEventScheduler>::current();
}

void print(std::FILE *stream, const QString &text)
{
    std::fputs((text + '\n').toUtf8().constData(), stream);
}

int complain(const QString &sentence, int status)
{
    print(stderr, QString("%1: %2").arg(ownName, sentence));
    return status;
}

QString sentenceFor(qint32 code)
{
    return QString("%1.").arg(qt_error_string(code));
}

/// A date of the local time zone in the form 03/14/26 06:55:00; null when it is none.
QDateTime dateIn(const QString &text)
{
    static const QRegularExpression form(
        "^(\\d\\d)/(\\d\\d)/(\\d\\d) ([01]\\d|2[0-3]):([0-5]\\d):([0-5]\\d)$");
    const auto match = form.match(text);
    const auto number = [&match](int index) { return match.captured(index).toInt(); };
    const QDate day(2000 + number(3), number(1), number(2));
    if (!match.hasMatch() || !day.isValid())
        return {};
    const QDateTime noon(day, {12, 0}); // which no clock change skips
    return zandorSoftwaresExtensions::dateFromHour(number(4), number(5), noon).addSecs(number(6));
}

bool isType(const QString &text)
{
    return text == PowerEventScheduler::wake || text == PowerEventScheduler::powerOn;
}

/// The scheduled events of that time and type, whoever scheduled them.
QList<Event> eventsLike(const QDateTime &time, const QString &type)
{
    QList<Event> events = scheduler().scheduledEvents();
    events.removeIf([&](const Event &event) { return event.time != time || event.type != type; });
    return events;
}

int list()
{
    const QList<Event> events = scheduler().scheduledEvents();
    if (events.isEmpty())
        print(stdout, "No power events are scheduled.");
    for (const Event &event : events) {
        print(stdout, QString("%1 at %2 by %3")
                          .arg(logLabel(event.type), event.time.toLocalTime().toString(dateFormat),
                               logLabel(event.owner)));
    }
    return success;
}

int schedule(const QString &type, const QDateTime &time)
{
    if (time <= Port<Clock>::current()->currentDate())
        return complain("the date has passed", failed);
    // Another one would not wake the machine any more than this one does.
    if (!eventsLike(time, type).isEmpty())
        return success;
    const qint32 code = scheduler().schedule(time, ownName, type);
    if (code == EINVAL || code == ERANGE ||
        code == EDOM) // of all that was asked for, only the time may be wrong
        return complain(time <= Port<Clock>::current()->currentDate()
                            ? "the date has passed"
                            : "the machine's clock cannot keep that time",
                        failed);
    return code == 0 ? success : complain(sentenceFor(code), failed);
}

int cancel(const QList<Event> &events)
{
    if (events.isEmpty())
        return complain("there is no such event", failed);
    for (const Event &event : events) {
        if (const qint32 code = scheduler().cancel(event.time, event.owner, event.type); code != 0)
            return complain(sentenceFor(code), failed);
    }
    return success;
}

int cancelOwn()
{
    QList<Event> events = scheduler().scheduledEvents();
    events.removeIf([](const Event &event) { return event.owner != ownName; });
    return events.isEmpty() ? success : cancel(events);
}

int obey(const QStringList &words)
{
    const QString order = words.value(0);
    const QDateTime time = dateIn(words.value(2));
    const bool hasEvent = words.size() == 3 && isType(words.at(1)) && time.isValid();
    const bool isKnown =
        order == "cancelall" ? words.size() == 1 : (order == "schedule" || order == "cancel") && hasEvent;
    if (!isKnown)
        return complain("not understood; try --help", HostOptions::badUsage);
    if (RootFolder::owner() != NSProcessInfo::effectiveUserID())
        return complain("only root may change power events", notPermitted);
    if (order == "schedule")
        return schedule(words.at(1), time);
    return order == "cancel" ? cancel(eventsLike(time, words.at(1))) : cancelOwn();
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(ownName);
    NSProcessInfo::setProcessName(ownName);
    takeRootFromOwnPlace("/usr/bin/pmset");
    HostOptions options("Schedules when the machine wakes (wake) or switches itself on (poweron).\n\n"
                        "  pmset schedule wake|poweron DATE\n"
                        "  pmset cancel wake|poweron DATE    whoever scheduled it\n"
                        "  pmset cancelall                   what pmset itself scheduled\n"
                        "  pmset -g sched                    lists everybody's\n\n"
                        "DATE is one argument, local time: \"MM/dd/yy HH:mm:ss\".\n"
                        "Exit status: 0 success, 1 failure, 2 bad usage, 3 not permitted.");
    const QCommandLineOption get("g", "Show <WHAT>: sched, the scheduled events.", "WHAT");
    options.parser().addOption(get);
    options.parser().addPositionalArgument("ORDER", "What to do.", "[ORDER [TYPE DATE]]");
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;

    const QStringList words = options.parser().positionalArguments();
    if (!options.parser().isSet(get))
        return obey(words);
    if (options.parser().value(get) != "sched" || !words.isEmpty())
        return complain("not understood; try --help", HostOptions::badUsage);
    return list();
}
