// SPDX-License-Identifier: MIT
#include "hosts/agent/StatusArea.h"

#include "DozelyKit/core/log/ZDRLog.h"

using namespace dozely;

namespace
{
constexpr char watcher[] = "org.kde.StatusNotifierWatcher";
constexpr char path[] = "/StatusNotifierWatcher";
constexpr std::chrono::seconds limit(30);
} // namespace

StatusArea::StatusArea()
    : m_watcher(BusConnection::Bus::Session, watcher,
                {.opened =
                     [this] {
                         m_hearing = m_watcher.subscribe(path, watcher, "StatusNotifierHostRegistered",
                                                         [this](const auto &) { ask(); });
                     },
                 .isThere = [this](const QByteArray &) { ask(); },
                 .isAway =
                     [this](BusService::Absence, const QString &) {
                         m_hasPlace = false;
                         update();
                     }})
{
    connect(&m_preference, &StatusIconPreference::changed, this, &StatusArea::update);
    (void)m_watcher.open(); // a session without a bus has no such place either
}

/// Whether somebody shows the icons that the watcher knows.
void StatusArea::ask()
{
    m_watcher.bus()->callLater({watcher, path, "org.freedesktop.DBus.Properties", "Get"}, "ss",
                               {QString(watcher), QString("IsStatusNotifierHostRegistered")}, limit,
                               [this](const BusConnection::Reply &reply) {
                                   m_hasPlace = m_watcher.isThere() && BusConnection::firstOf(reply).toBool();
                                   update();
                               });
}

void StatusArea::update()
{
    const bool isShown = m_hasPlace && StatusIconPreference::isWanted();
    if (isShown == (m_icon != nullptr))
        return;
    if (!isShown) {
        m_icon.release()->deleteLater(); // its menu may be what called this
        return;
    }
    m_icon = std::make_unique<StatusIcon>(SchedulerClient::onSystemBus(), StatusIcon::usualProgram());
    connect(m_icon.get(), &StatusIcon::hidingWanted, this, [this] {
        if (const auto kept = StatusIconPreference::setWanted(false); !kept)
            ZDRLog("That the status icon is not wanted could not be kept: %@", kept.error().text);
        update();
    });
    connect(m_icon.get(), &StatusIcon::refused, this,
            [this](const QString &schedule, const QString &why) { m_failures.show(schedule, why); });
}
