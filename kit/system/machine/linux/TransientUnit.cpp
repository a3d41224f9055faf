// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/TransientUnit_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"

#include <fcntl.h>

namespace dozely
{

namespace
{
QVariant property(const char *name, const QVariant &value)
{
    return QVariantList{QString::fromLatin1(name), value};
}

/// What it runs, `a(sasb)`. The manager replaces what follows a dollar in an argument, but for a second one.
QVariant command(const TransientService &service)
{
    QStringList words = service.arguments;
    words.prepend(service.program);
    words.replaceInStrings("$", "$$");
    const QVariant one = QVariantList{service.program, words, false};
    return QVariant::fromValue(BusVariant{"a(sasb)", QVariantList{one}});
}

QVariant descriptor(int number)
{
    const BusDescriptor copy(::fcntl(number, F_DUPFD_CLOEXEC, 3));
    return QVariant::fromValue(BusVariant{"h", QVariant::fromValue(copy)});
}

void add(QVariantList &properties, const char *name, std::optional<quint64> value)
{
    if (value)
        properties += property(name, *value);
}
} // namespace

QVariantList TransientUnit::properties(const TransientService &service)
{
    using std::chrono::microseconds;

    QVariantList list;
    list += property("Description", service.description);
    list += property("ExecStart", command(service));
    if (!service.environment.isEmpty())
        list += property("Environment", service.environment);
    list += property("StandardInputFileDescriptor", descriptor(service.input));
    list += property("StandardOutput", "journal");
    list += property("StandardError", "journal");
    list += property("SyslogIdentifier", service.logName);
    // What it starts is to find the signal as any program does.
    list += property("IgnoreSIGPIPE", false);
    list += property("KillMode", "mixed");
    list += property("TimeoutStopUSec", static_cast<quint64>(microseconds(service.timeToStop).count()));
    // One process that takes too much memory ends alone: the program tells what became of it.
    list += property("OOMPolicy", "continue");
    // A unit that failed leaves nothing behind, but for those who have asked for it to be remembered.
    list += property("CollectMode", "inactive-or-failed");
    list += property("AddRef", true);
    if (service.limits.nice)
        list += property("Nice", *service.limits.nice);
    add(list, "CPUWeight", service.limits.cpuWeight);
    add(list, "IOWeight", service.limits.ioWeight);
    add(list, "MemoryMax", service.limits.memory);
    return list;
}

} // namespace dozely
