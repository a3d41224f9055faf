// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerNews.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/bus/SchedulerProperties.h"

#include <utility>

using namespace dozely;

namespace
{
constexpr std::chrono::milliseconds uproarTime(100);
constexpr std::chrono::milliseconds refreshDelay(500); // what changes together is told at once
} // namespace

SchedulerNews::SchedulerNews(DaemonController &controller, BusObject &object, const SchedulerAnswers &answers,
                             SchedulerProperties &properties, Clock &clock)
    : m_controller(controller), m_object(object), m_answers(answers), m_properties(properties), m_clock(clock)
{
    ScheduleKeeper &keeper = controller.keeper();
    keeper.scheduler().addObserver(this);
    connect(&keeper, &ScheduleKeeper::began, this, [this](const Occurrence &occurrence) {
        tellOccurrence("OccurrenceBegan", occurrence.key(), m_answers.occurrence(occurrence));
    });
    connect(&keeper, &ScheduleKeeper::noted, this, [this](const OccurrenceRecord::Key &key) {
        const QVariantMap outcome = m_object.bus() ? m_answers.outcomeForAll(key) : QVariantMap();
        if (!outcome.isEmpty())
            tellOccurrence("OccurrenceEnded", key, outcome);
    });
    // Also where it has nothing in it: that is another answer than none.
    connect(&keeper, &ScheduleKeeper::readAtLast, this, &SchedulerNews::noteAnyChange);
    connect(&controller, &DaemonController::announced, this, [this](const Occurrence &occurrence) {
        tellOccurrence("OccurrenceAnnounced", occurrence.key(), m_answers.occurrence(occurrence));
    });
    connect(&controller, &DaemonController::agentCame, this, [this] {
        if (m_object.bus())
            m_object.setProperties(m_properties.ofConsole(true));
    });
}

SchedulerNews::~SchedulerNews()
{
    m_controller.keeper().scheduler().removeObserver(this);
}

void SchedulerNews::tellOccurrence(const char *signal, const OccurrenceRecord::Key &key,
                                   const QVariantMap &dictionary)
{
    if (!m_object.bus())
        return;
    if (m_told++ == 0) {
        m_clock.callAfter(uproarTime, this, [this] {
            if (std::exchange(m_told, 0) > mostAtOnce)
                noteAnyChange();
        });
    }
    if (m_told <= mostAtOnce)
        m_object.emitSignal(signal, {key.first, ScheduleDictionary::textOf(key.second), dictionary});
}

void SchedulerNews::noteEdit(const QString &identifier, const std::function<void()> &reread)
{
    m_isOwnEdit = true;
    reread();
    m_isOwnEdit = false;
    noteChange(identifier);
}

void SchedulerNews::noteChange(const QString &identifier)
{
    if (m_changed.size() >= mostAtOnce)
        m_isAnyChanged = true;
    else if (!m_changed.contains(identifier))
        m_changed += identifier;
    tellChangesSoon();
}

void SchedulerNews::noteAnyChange()
{
    m_isAnyChanged = true;
    tellChangesSoon();
}

void SchedulerNews::tellChangesSoon()
{
    if (!m_object.bus() || std::exchange(m_isTellComing, true))
        return;
    m_clock.callAfter({}, this, [this] {
        m_isTellComing = false;
        const QStringList changed = std::exchange(m_changed, {});
        const bool isAny = std::exchange(m_isAnyChanged, false);
        m_object.emitSignal("SchedulesChanged", {isAny ? QStringList() : changed});
    });
}

void SchedulerNews::schedulesReplaced()
{
    if (!m_isOwnEdit)
        noteAnyChange();
    refreshSoon();
}

void SchedulerNews::scheduleChanged(qint32 place)
{
    if (!m_object.bus())
        return;
    noteChange(m_controller.keeper().scheduler().schedules().at(place).identifier);
    refreshSoon();
}

void SchedulerNews::refreshSoon()
{
    if (!m_object.bus() || std::exchange(m_isRefreshComing, true))
        return;
    m_clock.callAfter(refreshDelay, this, [this] {
        m_isRefreshComing = false;
        m_object.setProperties(m_properties.ofSchedules());
    });
}

void SchedulerNews::refresh()
{
    QVariantMap values = m_properties.ofSchedules();
    values.insert(m_properties.ofConsole(false));
    m_object.setProperties(values);
}

void SchedulerNews::begin()
{
    m_changed.clear();
    m_isAnyChanged = false;
    refreshSoon();
}
