// SPDX-License-Identifier: MIT
#include "hosts/application/wishes/ReadyWishes.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/calendar/WallTimeSeries.h"
#include "hosts/common/schedules/SchedulePolicies.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
struct Sound {
    QString player;
    QString file; ///< Of a kind that it plays.
};

/// The first that the machine has; the first of all where it has none.
Sound soundHere()
{
    const QString alarm = "/usr/share/sounds/freedesktop/stereo/alarm-clock-elapsed.oga";
    const QList<Sound> sounds{{"/usr/bin/pw-play", alarm},
                              {"/usr/bin/paplay", alarm},
                              {"/usr/bin/aplay", "/usr/share/sounds/alsa/Front_Center.wav"}};
    for (const Sound &sound : sounds) {
        if (QFileInfo::exists(sound.player) && QFileInfo::exists(sound.file))
            return sound;
    }
    return sounds.constFirst();
}
} // namespace

QVariantMap ReadyWishes::schedule(const QString &name, const QString &bundle, const QString &rule, QTime time)
{
    const QTimeZone zone = machineTimeZone();
    const QDateTime now = Port<Clock>::current()->currentDate();
    const Recurrence meant{rule, {now.toTimeZone(zone).date(), time}, {}, {}, {}};
    const Recurrence begun = begunAnew(meant, zone, now).value();
    const QDateTime first = *OccurrenceSeries::of(begun, zone)->first();
    return {{"name", name},
            {"isEnabled", true},
            {"bundlePath", QString("%1/%2.plugin").arg(FixedPath::plugIns, bundle)},
            {"date", first.toString(Qt::ISODate)},
            {"timeZone", ""},
            {"repeats", QVariantMap{{"rule", begun.rule}, {"localStart", begun.localStart.toString()}}}};
}

QVariantMap ReadyWishes::switchOffInTheEvening()
{
    constexpr int fiveMinutes = 300; // seconds
    QVariantMap wish = schedule(tr("Switch off in the evening"), "PowerOff",
                                "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", QTime(22, 0));
    wish["parameters"] = QVariantMap{{ParameterKey::alert, 1}, {ParameterKey::delayBeforeAlert, fiveMinutes}};
    return wish;
}

QVariantMap ReadyWishes::wakeWithMusic()
{
    QVariantMap wish =
        schedule(tr("Wake with music"), "Command", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", QTime(6, 55));
    const auto [player, file] = soundHere();
    wish["actsIn"] = "session";
    wish["parameters"] = QVariantMap{{"Program", player},
                                     {"Arguments", QVariantList{file}},
                                     {ParameterKey::needsWakeUp, 1},
                                     {ParameterKey::needsStartup, 1}};
    return wish;
}

QVariantMap ReadyWishes::backupAtNight()
{
    QVariantMap wish = schedule(tr("Backup at night"), "Command", "FREQ=DAILY", QTime(3, 0));
    wish["actsIn"] = "daemon";
    wish["after"] = SchedulePolicies::nameOf(AfterAction::Sleep);
    wish["missed"] = SchedulePolicies::nameOf(MissedPolicy::RunOnce);
    // A shell, since the archive of last night goes when the new one is whole. The status 1 of tar says that
    // a file was changed meanwhile, which some always are. What is in the homes is nobody else's business.
    const QString steps =
        "umask 077; tar --create --gzip --one-file-system --file=/var/backups/home.tar.gz.new /home; "
        "[ $? -le 1 ] && mv /var/backups/home.tar.gz.new /var/backups/home.tar.gz";
    wish["parameters"] = QVariantMap{
        {"Program", "/bin/sh"}, {"Arguments", QVariantList{"-c", steps}}, {ParameterKey::needsWakeUp, 1}};
    return wish;
}

QList<QVariantMap> ReadyWishes::all()
{
    return {switchOffInTheEvening(), wakeWithMusic(), backupAtNight()};
}
