// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LinuxMachineIdentity_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <chrono>
#include <sys/utsname.h>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds limit{2};
constexpr qint64 longestRelease = 64 << 10; // bytes; such a file has some hundred

/// The value of a line of os-release, which a shell must be able to read: bare, or between quotes of either
/// kind, where a backslash between double quotes protects the next character.
QString unquoted(const QByteArray &text)
{
    QByteArray value;
    char quote = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        if (c == '\\' && quote != '\'' && i + 1 < text.size())
            value += text.at(++i);
        else if (quote ? c == quote : c == '"' || c == '\'')
            quote = quote ? '\0' : c;
        else
            value += c;
    }
    return QString::fromUtf8(value);
}

/// The last value wins, as in a shell.
QString releaseValue(const QByteArray &content, const QByteArray &key)
{
    QString value;
    for (const QByteArray &line : content.split('\n')) {
        const QByteArray assignment = line.trimmed();
        if (assignment.startsWith(key + '='))
            value = unquoted(assignment.mid(key.size() + 1));
    }
    return value.isEmpty() ? QString() : value;
}
} // namespace

QString LinuxMachineIdentity::systemVersion()
{
    for (const QString path : {"/etc/os-release", "/usr/lib/os-release"}) {
        if (const auto content = readRegularFile(RootFolder::join(path), longestRelease, true))
            return releaseValue(*content, "VERSION_ID");
    }
    return {};
}

QString LinuxMachineIdentity::computerName()
{
    // The kernel's own name is right even where no service runs.
    utsname names{};
    QString hostName = ::uname(&names) == 0 ? QString::fromUtf8(names.nodename) : QString();
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return hostName;
    const auto pretty = (*bus)->property({"org.freedesktop.hostname1", "/org/freedesktop/hostname1",
                                          "org.freedesktop.hostname1", "PrettyHostname"},
                                         QDeadlineTimer(limit));
    const QString name = pretty ? pretty->toString() : QString();
    return name.isEmpty() ? hostName : name;
}

template<>
std::shared_ptr<MachineIdentity> &Port<MachineIdentity>::current()
{
    static auto *const port = new std::shared_ptr<MachineIdentity>(std::make_shared<LinuxMachineIdentity>());
    return *port;
}

} // namespace dozely
