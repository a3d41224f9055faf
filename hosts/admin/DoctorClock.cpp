// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DoctorCheck.h"

#include <QFile>
#include <QRegularExpression>

using namespace dozely;

namespace
{
Finding synchronised(const DoctorServices & /*services*/)
{
    if (Port<Clock>::current()->isSynchronised())
        return Finding::fine(AdminText::tr("The clock is synchronised."));
    return Finding::wrong(
        AdminText::tr("Nothing keeps the clock right."),
        AdminText::tr("timedatectl set-ntp true, after apt install systemd-timesyncd or chrony"));
}

/// Zone data say of which year they are in their first line.
Finding zoneData(const DoctorServices & /*services*/)
{
    constexpr int yearsThatAreOld = 2;
    static const QRegularExpression form(R"(\A# version (\d{4})([a-z]{1,2}))");
    QFile file(RootFolder::join("/usr/share/zoneinfo/tzdata.zi"));
    if (!file.open(QIODevice::ReadOnly))
        return Finding::unknown(AdminText::tr("Nobody can tell how old the data of the time zones are."));
    const auto match = form.match(QString::fromLatin1(file.readLine(100)));
    if (!match.hasMatch())
        return Finding::unknown(AdminText::tr("The data of the time zones do not say how old they are."));
    const QString version = match.captured(1) + match.captured(2);
    if (Port<Clock>::current()->currentDate().date().year() - match.captured(1).toInt() >= yearsThatAreOld)
        return Finding::wrong(AdminText::tr("The data of the time zones are those of %1.").arg(version),
                              "apt install --only-upgrade tzdata");
    return Finding::fine(AdminText::tr("The data of the time zones are those of %1.").arg(version));
}

Finding machineZone(const DoctorServices & /*services*/)
{
    const QTimeZone zone = machineTimeZone();
    if (!zone.isValid() || !isTimeZoneName(QString::fromUtf8(zone.id())))
        return Finding::wrong(
            AdminText::tr("The machine's time zone has no name: /etc/localtime is no link to one."),
            AdminText::tr("timedatectl set-timezone Europe/Berlin, or where the machine is"));
    return Finding::fine(AdminText::tr("The machine's time zone is %1.").arg(QString::fromUtf8(zone.id())));
}
} // namespace

void DoctorChecks::addClock(List &checks)
{
    checks.push_back(std::make_unique<SimpleCheck>("clock", synchronised));
    checks.push_back(std::make_unique<SimpleCheck>("zone-data", zoneData));
    checks.push_back(std::make_unique<SimpleCheck>("time-zone", machineZone));
}
