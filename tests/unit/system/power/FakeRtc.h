// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/system/power/linux/RtcAlarm_p.h"
#include "support/FakeClock.h"
#include "support/ScratchRoot.h"

#include <QFile>

#include <cerrno>
#include <limits>
#include <utility>

#include <gmock/gmock.h>

/// The kernel's folder of a real-time clock below a scratch root, and what it does when its alarm is written:
/// an alarm that is set cannot be set again, one that is too far away is refused, one in the past disarms.
class FakeRtc
{
public:
    explicit FakeRtc(const ScratchRoot &root, const QString &device = "rtc0", bool hasAlarm = true)
        : m_root(root), m_folder("/sys/class/rtc/" + device)
    {
        root.makeFolder(m_folder);
        put("name", "rtc_fake " + device.toUtf8() + "\n");
        m_start = dozely::Port<dozely::Clock>::current()->currentDate().toSecsSinceEpoch();
        tick();
        if (hasAlarm)
            put("wakealarm", "");
    }

    /// How far the clock is ahead of UTC, in seconds.
    void setOffset(qint64 seconds)
    {
        m_offset = seconds;
        tick();
    }
    /// Shows the time that it is.
    void tick()
    {
        if (std::exchange(m_shown, time()) != time() && !m_isMute)
            put("since_epoch", QByteArray::number(time()) + "\n");
    }
    void stopTelling()
    {
        m_isMute = true;
        QFile::remove(m_root.join(m_folder + "/since_epoch"));
    }

    /// Goes on by itself: setting the system's clock does not move this one.
    qint64 time() const
    {
        return m_start + dozely::Port<dozely::Clock>::current()->steadyTime() / std::chrono::seconds(1) +
               m_offset;
    }
    /// The alarm that is set; 0 for none.
    qint64 alarm() const { return content("wakealarm").trimmed().toLongLong(); }
    /// Somebody else sets it.
    void setAlarm(qint64 value) { put("wakealarm", value == 0 ? "" : QByteArray::number(value) + "\n"); }

    dozely::RtcAlarm::Writer writer()
    {
        return [this](const QString &path, const QByteArray &text) { return write(path, text); };
    }

    QByteArrayList written; ///< In order.
    qint64 horizon =
        std::numeric_limits<qint64>::max() / 2; ///< Seconds from now on that an alarm may lie away.
    qint64 refused = 0;                         ///< The one time that it does not take.
    int failure = 0;                            ///< Of every write.
    bool isDeaf = false;                        ///< Takes what is written and does nothing.
    qint64 resolution = 1;                      ///< Alarms are cut to multiples of these seconds.

private:
    int write(const QString &path, const QByteArray &text)
    {
        EXPECT_EQ(path.toStdString(), m_root.join(m_folder + "/wakealarm").toStdString());
        written += text;
        if (failure != 0 || isDeaf)
            return failure;
        const qint64 value = text.toLongLong();
        if (value <= time()) {
            setAlarm(0);
            return 0;
        }
        if (alarm() > time())
            return EBUSY;
        if (value - time() > horizon || value == refused)
            return EINVAL;
        setAlarm(value / resolution * resolution);
        return 0;
    }
    QByteArray content(const QString &name) const
    {
        QFile file(m_root.join(m_folder + '/' + name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QString &name, const QByteArray &text)
    {
        QFile file(m_root.join(m_folder + '/' + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }

    const ScratchRoot &m_root;
    QString m_folder;
    qint64 m_start = 0;
    qint64 m_offset = 0;
    qint64 m_shown = 0;
    bool m_isMute = false;
};

/// Calendar and real-time clock of a machine. Both stand still until the test lets time pass.
class RtcFixture : public testing::Test
{
protected:
    /// Whoever reads the calendar finds the other clock shown right.
    class MachineClock : public FakeClock
    {
    public:
        QDateTime currentDate() const override
        {
            if (rtc)
                rtc->tick();
            return FakeClock::currentDate();
        }
        FakeRtc *rtc = nullptr;
    };

    RtcFixture() { clock->rtc = &rtc; }
    ~RtcFixture() override { clock->rtc = nullptr; }

    QDateTime now() const { return clock->currentDate(); }
    /// Seconds from 1970 to some seconds from now on.
    qint64 in(qint64 seconds) const { return now().toSecsSinceEpoch() + seconds; }
    void pass(std::chrono::seconds time) { clock->advance(time); }
    /// The machine sleeps until then: no timer runs.
    void sleepUntil(const QDateTime &date)
    {
        rtc.setOffset(now().secsTo(date));
        clock->jumpTo(date);
    }

private:
    /// Made first: the other clock is set by it.
    static std::shared_ptr<MachineClock> makeClock()
    {
        auto made = std::make_shared<MachineClock>();
        dozely::Port<dozely::Clock>::current() = made;
        return made;
    }

protected:
    std::shared_ptr<MachineClock> clock = makeClock();
    ScratchRoot root;
    FakeRtc rtc{root};
};
