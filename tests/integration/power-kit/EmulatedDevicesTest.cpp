// SPDX-License-Identifier: MIT
#include "support/PrintTo.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::Ge;
using testing::Le;

namespace
{
/// What came of the probe with these arguments, on a machine with emulated devices.
QJsonObject probe(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Another library is loaded before the sanitizer's, and keeps what it allocated.
    environment.insert("ASAN_OPTIONS",
                       environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0:detect_leaks=0");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start("umockdev-wrapper", QStringList{PYTHON, EMULATED_DEVICES, DEVICE_PROBE} + arguments);
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0);
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

/// "type code value" of each event.
QStringList eventsIn(const QJsonObject &outcome)
{
    QStringList events;
    for (const QJsonValue &event : outcome.value("events").toArray()) {
        const QJsonArray parts = event.toArray();
        events += QString("%1 %2 %3").arg(parts[0].toInt()).arg(parts[1].toInt()).arg(parts[2].toInt());
    }
    return events;
}

QString key(int code, int value)
{
    return QString("%1 %2 %3").arg(EV_KEY).arg(code).arg(value);
}

const char report[] = "0 0 0";
} // namespace

TEST(EmulatedDevices, OneKeyboardPressesAndReleasesEachKey)
{
    const QJsonObject outcome = probe({"keys", "255", "7"});
    EXPECT_EQ(outcome.value("status").toInt(), 0);
    EXPECT_EQ(outcome.value("keyboards").toArray(), QJsonArray{"Dozely keys"});
    EXPECT_THAT(eventsIn(outcome), ElementsAre(key(KEY_UNKNOWN, 1), report, key(KEY_UNKNOWN, 0), report,
                                               key(KEY_MUTE, 1), report, key(KEY_MUTE, 0), report));
    EXPECT_EQ(outcome.value("output").toArray(), (QJsonArray{"driver 1", "driver 1"}));
}

TEST(EmulatedDevices, TheAlarmOfTheClockIsSet)
{
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const QJsonObject outcome = probe({"alarm", "600"});
    EXPECT_EQ(outcome.value("status").toInt(), 0);
    const QJsonArray output = outcome.value("output").toArray();
    EXPECT_EQ(output.at(0).toString(), "rtc0 rtc_emulated");
    EXPECT_EQ(output.at(1).toString(), outcome.value("alarm").toString());
    EXPECT_THAT(outcome.value("alarm").toString().toLongLong(), testing::AllOf(Ge(now + 600), Le(now + 700)));
}
