// SPDX-License-Identifier: MIT
//
// What a daemon that was killed or started again finds, and what it makes of it.
#include "hosts/daemon/OccurrenceDatabase.h"
#include "integration/hosts/HostsFixture.h"

#include <sys/stat.h>

/// Many schedules that come due together, and a daemon that has begun some of them.
class ManyAtOnceTest : public HostsTest
{
protected:
    void begin(int many, int begun)
    {
        startDaemon();
        const QDateTime date = soon();
        for (int i = 0; i < many; ++i)
            schedules += probeEntry(QString("m%1.").arg(i), with(inDaemon, "Time Out", -3600LL), date);
        writeStore(schedules);
        // Soon: on a busy machine the rest run while this process waits for its turn.
        ASSERT_TRUE(waitUntil([&] { return countOf("Probe acts in the daemon: ") > begun; }));
    }

    QVariantList schedules;
};

TEST_F(HostsTest, ADaemonThatIsKilledAndStartedAgainNeitherRepeatsNorForgets)
{
    startDaemon();
    // Late enough would be a repetition, were it not remembered.
    const QVariantMap patient = with(inDaemon, "Time Out", -3600LL);
    const QVariantMap first = probeEntry("first", patient);
    writeStore({first});
    ASSERT_TRUE(logs("Probe acts in the daemon: first"));
    kill(daemon);
    const QVariantMap missed = probeEntry("missed", patient, soon().addSecs(-60));
    writeStore({first, missed});
    startDaemon();
    ASSERT_TRUE(logs("Probe acts in the daemon: missed"));
    const QVariantMap third = probeEntry("third", patient);
    writeStore({first, missed, third});
    ASSERT_TRUE(logs("Probe acts in the daemon: third"));
    EXPECT_EQ(countOf("Probe acts in the daemon: first"), 1);
    EXPECT_EQ(countOf("Probe acts in the daemon: missed"), 1);
}

TEST_F(HostsTest, AnActionThatIsCutShortIsLoggedAsInterruptedAndNotRepeated)
{
    startDaemon();
    const QVariantMap endless =
        probeEntry("endless", with(with(inDaemon, "Goes On", "for ever"), "Time Out", -3600LL));
    writeStore({endless});
    ASSERT_TRUE(logs("Probe acts in the daemon: endless"));
    kill(daemon);
    root.killPerformers(); // as a power cut does
    startDaemon();
    ASSERT_TRUE(logs("was interrupted and is not repeated"));
    writeStore({endless, probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: endless"), 1);
}

TEST_F(HostsTest, AnActionGoesOnWhileTheDaemonIsStartedAgainWhichRecordsItsEnd)
{
    for (const bool isKilled : {false, true}) {
        startDaemon();
        const QString end = root.join(QString("/end%1").arg(isKilled));
        const QString name = isKilled ? "killed" : "stopped";
        const QVariantMap entry =
            probeEntry(name, with(with(inDaemon, "Goes On Until There Is", end), "Exit Status", 3LL));
        writeStore({entry});
        ASSERT_TRUE(logs("Probe acts in the daemon: " + name));
        if (isKilled)
            kill(daemon);
        else
            EXPECT_EQ(endOf(daemon), 0);
        startDaemon();
        ASSERT_TRUE(logs(QString("Schedule \"Name of %1\" was begun by an earlier daemon").arg(name)));
        const QDateTime date = entry["Date"].toDateTime();
        EXPECT_EQ(outcomeOf(name, date), "begun");
        QFile(end).open(QIODevice::WriteOnly);
        EXPECT_TRUE(waitUntil([&] { return outcomeOf(name, date) == "failed"; }));
        EXPECT_EQ(
            countOf(QString("Schedule \"Name of %1\" failed: its program ended with status 3").arg(name)), 1);
        EXPECT_EQ(countOf("Probe acts in the daemon: " + name), 1);
        kill(daemon);
    }
}

TEST_F(HostsTest, AnActionThatEndedWhileThereWasNoDaemonIsRecordedByTheNext)
{
    startDaemon();
    const QString end = root.join("/end");
    const QVariantMap entry = probeEntry("alone", with(inDaemon, "Goes On Until There Is", end));
    writeStore({entry});
    ASSERT_TRUE(logs("Probe acts in the daemon: alone"));
    EXPECT_EQ(endOf(daemon), 0);
    QFile(end).open(QIODevice::WriteOnly);
    ASSERT_TRUE(logs("Probe terminated"));
    startDaemon();
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("alone", entry["Date"].toDateTime()) == "done"; }));
}

TEST_F(ManyAtOnceTest, NoneRunsTwiceWhenTheDaemonIsKilled)
{
#ifdef __SANITIZE_ADDRESS__ // with which each takes half a second
    constexpr int many = 100;
#else
    constexpr int many = 400;
#endif
    begin(many, 10);
    kill(daemon);
    startDaemon();
    writeStore(schedules + QVariantList{probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    // What was not started was lost, and is told before anything else is begun.
    for (int i = 0; i < many; ++i) {
        const QString identifier = QString("m%1.").arg(i);
        const qsizetype acted = countOf(QString("Probe acts in the daemon: %1,").arg(identifier));
        EXPECT_LE(acted, 1) << i;
        EXPECT_GE(acted + countOf(QString("Schedule \"Name of %1\" at ").arg(identifier)), 1) << i;
    }
    EXPECT_LT(countOf("Probe acts in the daemon: m"), many) << "it was killed too late to show anything";
}

TEST_F(ManyAtOnceTest, ThoseThatWereNotStartedRunAfterAnOrderlyRestart)
{
    constexpr int many = 200;
    begin(many, many / 4);
    EXPECT_EQ(endOf(daemon), 0);
    startDaemon();
    EXPECT_TRUE(waitUntil([this] { return countOf("Probe acts in the daemon: ") >= many; }));
    for (int i = 0; i < many; ++i)
        EXPECT_EQ(countOf(QString("Probe acts in the daemon: m%1.,").arg(i)), 1) << i;
}

TEST_F(HostsTest, AnActionToWhichNoPerformerHadComeRunsAfterAnOrderlyRestart)
{
    // On a machine that is so busy that a performer takes its time before it begins.
    const QString performer = QString(LIBEXEC_FOLDER) + "/dozely-performer";
    const QString hold = root.join("/hold");
    ASSERT_EQ(::mkfifo(qPrintable(hold), 0600), 0);
    ASSERT_TRUE(QFile::rename(root.join(performer), root.join(performer + ".real")));
    write(performer, QString("#!/bin/sh\n"
                             "test \"$1\" = --ask || test ! -p '%1' || read go < '%1'\n"
                             "exec '%2.real' \"$@\"\n")
                         .arg(hold, root.join(performer))
                         .toUtf8());
    ASSERT_EQ(::chmod(qPrintable(root.join(performer)), 0755), 0);
    startDaemon();
    const QVariantMap slow = probeEntry("slow", with(inDaemon, "Time Out", -3600LL));
    writeStore({slow});
    ASSERT_TRUE(logs("\"Name of slow\" acts in the daemon"));
    EXPECT_EQ(endOf(daemon), 0);
    ASSERT_TRUE(QFile::rename(hold, hold + ".former"));
    startDaemon();
    EXPECT_TRUE(logs("Probe acts in the daemon: slow"));
    QFile late(hold + ".former");
    ASSERT_TRUE(late.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    EXPECT_EQ(late.write("\n"), 1);
    writeStore({slow, probeEntry("next", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: slow"), 1);
    EXPECT_EQ(countOf("was interrupted"), 0);
}

TEST_F(HostsTest, ADamagedRecordRepeatsNothingAlthoughTheDaemonIsKilledBeforeItSaves)
{
    startDaemon();
    const QVariantMap ran = probeEntry("ran", with(inDaemon, "Time Out", -3600LL));
    writeStore({ran});
    ASSERT_TRUE(logs("Probe acts in the daemon: ran"));
    kill(daemon);
    for (const char *companion : {"", "-wal", "-shm"})
        QFile::remove(root.join(recordPath) + companion);
    write(recordPath, "damaged");
    startDaemon();
    kill(daemon);
    startDaemon();
    // The daemon that was killed may have saved it and told nobody.
    EXPECT_TRUE(waitUntil([&] { return recorded(ran).state == "skipped"; }));
    writeStore({ran, probeEntry("next", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: ran"), 1);
}

TEST_F(HostsTest, WhatWasAcknowledgedRunsOnceAlthoughTheDaemonIsKilled)
{
    constexpr int rounds = 20;
    constexpr int ordersARound = 5;
    QVariantList schedules;
    for (int i = 0; i < rounds * ordersARound; ++i)
        schedules += probeEntry(QString("s%1.").arg(i), inDaemon, soon().addSecs(3600));
    writeStore(schedules);
    QStringList acknowledged;
    for (int round = 0; round < rounds; ++round) {
        startDaemon();
        QHash<QString, std::shared_ptr<QProcess>> posters;
        for (int i = 0; i < ordersARound; ++i) {
            const QString identifier = QString("s%1.").arg(round * ordersARound + i);
            posters.insert(identifier, startPostAs(agentUser(), "daemon", runNow(identifier)));
        }
        const auto ended = [&] {
            return std::count_if(posters.begin(), posters.end(),
                                 [](const auto &poster) { return poster->state() == QProcess::NotRunning; });
        };
        // Killed when some of them have their answers.
        EXPECT_TRUE(waitUntil([&] { return ended() > round % ordersARound; }));
        kill(daemon);
        EXPECT_TRUE(waitUntil([&] { return ended() == ordersARound; }));
        for (auto poster = posters.cbegin(); poster != posters.cend(); ++poster) {
            if ((*poster)->exitStatus() == QProcess::NormalExit && (*poster)->exitCode() == 0)
                acknowledged += poster.key();
        }
    }
    startDaemon();
    EXPECT_GE(acknowledged.size(), rounds);
    const auto isLost = [this](const QString &identifier) {
        return countOf("Probe acts in the daemon: " + identifier) == 0 &&
               countOf(QString("Schedule \"Name of %1\" at ").arg(identifier)) == 0; // it was interrupted
    };
    QStringList lost = acknowledged;
    EXPECT_TRUE(waitUntil([&] {
        lost.removeIf([&](const QString &identifier) { return !isLost(identifier); });
        return lost.isEmpty();
    })) << lost.join(' ').toStdString();
    for (int i = 0; i < rounds * ordersARound; ++i)
        EXPECT_LE(countOf(QString("Probe acts in the daemon: s%1.,").arg(i)), 1) << i;
}
