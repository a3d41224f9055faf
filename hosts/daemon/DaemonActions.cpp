// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonActions.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "hosts/daemon/PlugInAnswers.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <sys/stat.h>
#include <utility>

using namespace dozely;

namespace
{
/// Made, and closed to others.
QString ownFolder(const QString &name)
{
    const QString path = RootFolder::join(name);
    if (QDir().mkpath(path))
        ::chmod(QFile::encodeName(path).constData(), 0700);
    return path;
}

QString labelOf(const Occurrence &occurrence)
{
    return QString("Schedule \"%1\"").arg(logLabel(occurrence.schedule.name));
}

/// Empty for a bundle that is gone or not trusted any more.
QVariantMap bundleInfoIn(const PerformanceOrder &order)
{
    const PlugInLoader loader(InfoKey::daemonModule, PlugInLoader::sourcesOfTheSystem());
    const auto bundle = loader.bundle(order.bundlePath);
    return bundle ? (*bundle)->infoDictionary() : QVariantMap();
}
} // namespace

DaemonActions::DaemonActions(ScheduleKeeper &keeper, Performances &performances, PlugInAnswers &answers)
    : m_keeper(keeper), m_performances(performances), m_answers(answers)
{
    QStringList names;
    for (const Key &key : m_keeper.scheduler().record().begunInDaemon())
        names += nameOf(key);
    m_performances.sweep(names);
    connect(&m_keeper, &ScheduleKeeper::saved, this, [this] {
        for (const QString &name : std::exchange(m_noted, {}))
            m_performances.forget(name);
    });
}

QString DaemonActions::folder()
{
    return ownFolder("/var/lib/dozely/performing");
}

QString DaemonActions::spareFolder()
{
    return ownFolder("/run/dozely/performing"); // in memory
}

DaemonActions::Key DaemonActions::keyOf(const Occurrence &occurrence)
{
    return {occurrence.schedule.identifier, occurrence.date};
}

QString DaemonActions::nameOf(const Key &key)
{
    const QByteArray text = key.first.toUtf8() + '\n' + QByteArray::number(key.second.toMSecsSinceEpoch());
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
}

void DaemonActions::takeUp()
{
    const QHash<QString, PerformanceOrder> orders = m_performances.ofEarlierHosts();
    for (const Key &key : m_keeper.scheduler().record().begunInDaemon()) {
        const auto schedule = m_keeper.scheduler().schedule(key.first);
        Occurrence occurrence{schedule.value_or(Schedule()), key.second};
        if (!schedule)
            occurrence.schedule.name = occurrence.schedule.identifier = key.first;
        const bool isThere =
            m_performances.adopt(nameOf(key), [this, occurrence](const PerformanceOutcome &outcome) {
                endedLater(occurrence, outcome);
            });
        if (isThere) {
            ZDRLog("%@ was begun by an earlier daemon", labelOf(occurrence));
            const QVariantMap bundleInfo = bundleInfoIn(orders.value(nameOf(key)));
            m_acting.insert(key, {occurrence, m_inhibitor.hold(bundleInfo), bundleInfo});
        } else { // it has ended since the record was read
            endedLater(occurrence, {});
        }
    }
}

bool DaemonActions::isGoingOn(const QString &identifier) const
{
    return std::any_of(m_acting.keyBegin(), m_acting.keyEnd(),
                       [&](const Key &key) { return key.first == identifier; });
}

bool DaemonActions::mayPrepare(const Occurrence &occurrence) const
{
    return m_prepared.size() < mostPrepared && !m_prepared.contains(keyOf(occurrence));
}

void DaemonActions::prepare(const Occurrence &occurrence, const QVariantMap &bundleInfo)
{
    if (!mayPrepare(occurrence))
        return;
    m_prepared.insert(keyOf(occurrence), {occurrence, !start(occurrence, bundleInfo).ok()});
}

void DaemonActions::callOffUnless(const std::function<bool(const Occurrence &)> &isToBePerformed)
{
    m_prepared.removeIf([&](const auto &prepared) {
        const bool isGone = !isToBePerformed(prepared->occurrence);
        if (isGone)
            m_performances.callOff(nameOf(prepared.key()));
        return isGone;
    });
}

Result<void> DaemonActions::start(const Occurrence &occurrence, const QVariantMap &bundleInfo)
{
    const Schedule &schedule = occurrence.schedule;
    PerformanceOrder order{schedule.name, schedule.fullBundlePath(), schedule.parameters,
                           occurrence.calendarDate()};
    order.limits = ActionLimits::read(schedule.name, schedule.parameters, order.bundlePath, bundleInfo);
    return m_performances.prepare(
        nameOf(keyOf(occurrence)), std::move(order),
        [this, occurrence](const PerformanceOutcome &outcome) { ended(occurrence, outcome); });
}

void DaemonActions::perform(const Occurrence &occurrence, const QVariantMap &bundleInfo)
{
    const Key key = keyOf(occurrence);
    const QString name = nameOf(key);
    const auto prepared = m_prepared.constFind(key);
    bool isReady = prepared != m_prepared.cend() && !prepared->isInVain;
    if (isReady && (prepared->occurrence.schedule != occurrence.schedule ||
                    prepared->occurrence.moment() != occurrence.moment())) {
        m_performances.callOff(name);
        isReady = false;
    }
    m_prepared.remove(key); // from here on its end is that of the action
    Acting &acting = *m_acting.insert(key, {occurrence, m_inhibitor.hold(bundleInfo), bundleInfo});
    ZDRLog("%@ acts in the daemon", labelOf(occurrence));
    if (isReady && m_performances.go(name)) {
        acting.mayStartAnew = true;
        return;
    }
    if (isReady) // it has ended meanwhile
        m_performances.callOff(name);
    startNow(occurrence, bundleInfo);
}

void DaemonActions::takeBack()
{
    m_acting.removeIf([this](const auto &acting) {
        const bool isTakenBack = m_performances.takeBack(nameOf(acting.key()));
        if (isTakenBack)
            m_keeper.takeBack(acting->occurrence);
        return isTakenBack;
    });
}

void DaemonActions::startNow(const Occurrence &occurrence, const QVariantMap &bundleInfo)
{
    const QString name = nameOf(keyOf(occurrence));
    // One that a daemon before this one made ready may not have heard yet that nobody will let it go.
    const bool isThere =
        m_performances.adopt(name, [this, occurrence, bundleInfo](const PerformanceOutcome &outcome) {
            if (outcome.ended.isValid())
                ended(occurrence, outcome);
            else
                startNow(occurrence, bundleInfo);
        });
    if (isThere)
        return;
    if (const auto started = start(occurrence, bundleInfo); !started)
        ended(occurrence, {false, started.error().text});
    else
        m_performances.go(name);
}

/// For one that an earlier daemon began, and perhaps did not let go any more.
void DaemonActions::endedLater(const Occurrence &occurrence, const PerformanceOutcome &outcome)
{
    if (outcome.ended.isValid())
        return ended(occurrence, outcome);
    m_acting.remove(keyOf(occurrence));
    m_keeper.noteInterrupted(occurrence);
}

void DaemonActions::ended(const Occurrence &occurrence, const PerformanceOutcome &outcome)
{
    if (const auto prepared = m_prepared.find(keyOf(occurrence)); prepared != m_prepared.end()) {
        prepared->isInVain = true;
        return;
    }
    const auto acting = m_acting.find(keyOf(occurrence));
    if (acting != m_acting.end() && std::exchange(acting->mayStartAnew, false) && !outcome.hasBegun &&
        !outcome.ended.isValid()) {
        ZDRLog("%@ is given another performer: %@", labelOf(occurrence), outcome.reason());
        startNow(occurrence, QVariantMap(acting->bundleInfo));
        return;
    }
    m_acting.remove(keyOf(occurrence));
    m_performances.keep(nameOf(keyOf(occurrence)));
    m_noted += nameOf(keyOf(occurrence));
    m_keeper.noteEnd(occurrence, outcome);
    if (outcome.hasDied)
        m_answers.noteDeath(occurrence.schedule, outcome.failure);
    else if (outcome.hasBegun)
        m_answers.noteSuccess(occurrence.schedule);
    if (outcome.isSuccess())
        return;
    const QString reason = outcome.reason();
    if (!outcome.isPerformed())
        ZDRLog("%@ was not performed: %@", labelOf(occurrence), reason);
    else if (!outcome.ended.isValid())
        ZDRLog("%@ was interrupted, or nobody can say how it ended: %@", labelOf(occurrence), reason);
    else
        ZDRLog("%@ failed: %@", labelOf(occurrence), reason);
    Q_EMIT failed(occurrence, reason);
}
