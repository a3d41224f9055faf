// SPDX-License-Identifier: MIT
//
// Uses the machine's devices through the ports: "keys CODE..." posts aux keys, "alarm SECONDS" sets the alarm
// of the real-time clock that far from now.
#include "DozelyKit/system/power/ZDRKeyManager.h"
#include "DozelyKit/system/power/linux/RtcAlarm_p.h"

#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

using namespace dozely;

namespace
{
int postKeys(const QStringList &codes)
{
    for (const QString &code : codes) {
        ZDRKeyManager::postAuxKey(static_cast<quint8>(code.toUInt()));
        std::printf("driver %u\n", ZDRKeyManager::eventDriver());
    }
    return 0;
}

int setAlarm(qint64 seconds)
{
    const auto clock = RtcAlarm::find();
    if (!clock)
        return 3;
    const QDateTime date = QDateTime::currentDateTimeUtc().addSecs(seconds);
    qint64 reached = 0;
    const int failure = clock->set(clock->fromDate(date), &reached);
    std::printf("%s %s\n%lld\n", qPrintable(clock->device()), qPrintable(clock->clockName()),
                static_cast<long long>(reached));
    return failure;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.value(0) == "keys")
        return postKeys(words.mid(1));
    return words.value(0) == "alarm" ? setAlarm(words.value(1).toLongLong()) : 2;
}
