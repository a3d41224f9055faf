// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>

namespace dozely
{

/// The wake alarm of a real-time clock, by the kernel's files below /sys/class/rtc.
///
/// The clock counts seconds from 1970 on, in UTC or in local time, and may be wrong: a date is translated by
/// the difference between that clock and the system's at the moment. While the machine sleeps or is off,
/// nobody but the clock itself moves it. Functions that return an int return 0 or an errno value.
class DOZELYKIT_AUTOTEST_EXPORT RtcAlarm
{
public:
    /// Writes `text` to a file of the kernel's: 0 or an errno value.
    using Writer = std::function<int(const QString &path, const QByteArray &text)>;
    static int writeKernelFile(const QString &path, const QByteArray &text);

    /// The first clock that has an alarm; absent when the machine has none.
    static std::optional<RtcAlarm> find(Writer writer = writeKernelFile);

    QString device() const;
    QString clockName() const;

    /// What the clock shows.
    qint64 clockTime() const;
    /// When the alarm goes off, by the clock; absent when it is not set, or was, for a time that has passed.
    std::optional<qint64> armedFor() const;

    /// Sets the alarm and reads it back into `*reached`. EINVAL for a time that has passed (the kernel would
    /// take that for a wish to have no alarm) and for one farther away than the alarm reaches; EIO when it
    /// reads back otherwise.
    int set(qint64 clockTime, qint64 *reached) const;

    /// As `set`, but for a time that is too far away the farthest step towards it.
    int setTowards(qint64 clockTime, qint64 *reached) const;

    int clear() const;

    qint64 fromDate(const QDateTime &date) const; ///< A fraction of a second counts as a whole one.
    QDateTime toDate(qint64 clockTime) const;     ///< UTC.

private:
    RtcAlarm(QString folder, Writer writer);
    qint64 measureOffset() const;
    int write(const QByteArray &text) const;

    QString m_folder;
    Writer m_writer;
    qint64 m_offset = 0; // seconds by which the clock is ahead of UTC
};

} // namespace dozely
