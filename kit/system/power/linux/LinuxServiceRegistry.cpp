// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/LinuxServiceRegistry_p.h"

#include "DozelyKit/system/power/linux/RtcAlarm_p.h"

#include <cerrno>

namespace
{
constexpr quint32 masterPortHandle = 1;
constexpr char powerController[] = "ApplePMU";
constexpr char inputSystem[] = "IOHIDSystem";

bool exists(const QByteArray &className)
{
    return className == inputSystem || (className == powerController && RtcAlarm::find());
}
} // namespace

LinuxServiceRegistry::LinuxServiceRegistry() : m_lastHandle(masterPortHandle) {}

quint32 LinuxServiceRegistry::keep(const Entry &entry)
{
    m_entries.insert(++m_lastHandle, entry);
    return m_lastHandle;
}

qint32 LinuxServiceRegistry::masterPort(quint32 *port)
{
    *port = masterPortHandle;
    return 0;
}

quint32 LinuxServiceRegistry::matchingService(quint32 masterPort, const QByteArray &className)
{
    return masterPort == masterPortHandle && exists(className) ? keep({className, {}}) : 0;
}

qint32 LinuxServiceRegistry::matchingServices(quint32 masterPort, const QByteArray &className,
                                              quint32 *iterator)
{
    if (masterPort != masterPortHandle)
        return EINVAL;
    *iterator = keep({{}, exists(className) ? QList<QByteArray>{className} : QList<QByteArray>{}});
    return 0;
}

quint32 LinuxServiceRegistry::next(quint32 iterator)
{
    const auto found = m_entries.find(iterator);
    return found == m_entries.end() || found->rest.isEmpty() ? 0 : keep({found->rest.takeFirst(), {}});
}

qint32 LinuxServiceRegistry::release(quint32 handle)
{
    return m_entries.remove(handle) ? 0 : EINVAL;
}

qint32 LinuxServiceRegistry::properties(quint32 service, QVariantMap *properties)
{
    const auto found = m_entries.constFind(service);
    if (found == m_entries.constEnd() || found->className.isEmpty())
        return EINVAL;
    properties->clear();
    const auto clock = found->className == powerController ? RtcAlarm::find() : std::nullopt;
    const auto armed = clock ? clock->armedFor() : std::nullopt;
    if (armed)
        properties->insert("AutoWake", quint64(*armed - clock->clockTime()));
    return 0;
}
