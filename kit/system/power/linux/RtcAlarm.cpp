// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/RtcAlarm_p.h"

#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTimeZone>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr qint64 longestFile = 4096; // bytes: a page, as the kernel has it
constexpr qint64 day = 86'400;       // seconds
constexpr qint64 hour = 3600;
// How far alarms reach, with a minute to spare: a year, a month, or a day, by what the clock's alarm can
// hold; some that count seconds reach less.
constexpr qint64 reaches[] = {365 * day - 60, 28 * day - 60, day - 60, 12 * hour - 60,
                              6 * hour - 60,  hour - 60,     900};
// Alarms of some clocks go by whole minutes.
constexpr qint64 resolution = 60;
// A clock and the system's are read one after the other; less than this is no difference.
constexpr qint64 negligible = 2;
constexpr qint64 zoneStep = 900; // offsets of time zones are quarters of an hour

std::optional<QByteArray> contentOf(const QString &path)
{
    const auto content = readRegularFile(path, longestFile, true);
    return content ? std::optional(content->trimmed()) : std::nullopt;
}

std::optional<qint64> numberIn(const QString &path)
{
    bool isNumber = false;
    const qint64 number = contentOf(path).value_or(QByteArray()).toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Whether the clock is kept in local time, as the third line of that file says.
bool isClockLocal()
{
    const auto content = contentOf(RootFolder::join("/etc/adjtime")).value_or(QByteArray());
    return content.split('\n').value(2).trimmed() == "LOCAL";
}

QDateTime now()
{
    return Port<Clock>::current()->currentDate();
}
} // namespace

int RtcAlarm::writeKernelFile(const QString &path, const QByteArray &text)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (file < 0)
        return errno;
    const auto close = qScopeGuard([file] { ::close(file); });
    return ::write(file, text.constData(), static_cast<size_t>(text.size())) == text.size() ? 0 : errno;
}

std::optional<RtcAlarm> RtcAlarm::find(Writer writer)
{
    const QDir clocks(RootFolder::join("/sys/class/rtc"));
    QStringList names = clocks.entryList({"rtc*"}, QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        return left.size() != right.size() ? left.size() < right.size() : left < right; // rtc2 before rtc10
    });
    for (const QString &name : names) {
        if (QFile::exists(clocks.filePath(name) + "/wakealarm"))
            return RtcAlarm(clocks.filePath(name), std::move(writer));
    }
    return {};
}

RtcAlarm::RtcAlarm(QString folder, Writer writer) : m_folder(std::move(folder)), m_writer(std::move(writer))
{
    m_offset = measureOffset();
}

qint64 RtcAlarm::measureOffset() const
{
    const QDateTime date = now();
    const auto shown = numberIn(m_folder + "/since_epoch");
    if (!shown)
        return isClockLocal() ? QTimeZone::systemTimeZone().offsetFromUtc(date) : 0;
    const qint64 difference = *shown - date.toSecsSinceEpoch();
    const qint64 zone = (difference + (difference < 0 ? -zoneStep / 2 : zoneStep / 2)) / zoneStep * zoneStep;
    return std::llabs(difference - zone) <= negligible ? zone : difference;
}

QString RtcAlarm::device() const
{
    return m_folder.section('/', -1);
}

QString RtcAlarm::clockName() const
{
    return QString::fromUtf8(contentOf(m_folder + "/name").value_or(QByteArray()));
}

qint64 RtcAlarm::clockTime() const
{
    return now().toSecsSinceEpoch() + m_offset;
}

std::optional<qint64> RtcAlarm::armedFor() const
{
    const auto alarm = numberIn(m_folder + "/wakealarm"); // empty while none is set
    return alarm && *alarm > clockTime() ? alarm : std::nullopt;
}

int RtcAlarm::write(const QByteArray &text) const
{
    return m_writer(m_folder + "/wakealarm", text);
}

int RtcAlarm::set(qint64 clockTime, qint64 *reached) const
{
    if (clockTime <= this->clockTime())
        return EINVAL;
    // An alarm that is set cannot be changed, only taken away.
    if (const int failure = clear(); failure != 0)
        return failure;
    if (const int failure = write(QByteArray::number(clockTime)); failure != 0)
        return failure;
    const auto shown = armedFor();
    if (!shown || std::llabs(*shown - clockTime) >= resolution)
        return EIO;
    *reached = *shown;
    return 0;
}

int RtcAlarm::setTowards(qint64 clockTime, qint64 *reached) const
{
    const auto isTooFar = [](int failure) {
        return failure == EINVAL || failure == ERANGE || failure == EDOM;
    };
    int failure = set(clockTime, reached);
    for (const qint64 reach : reaches) {
        const qint64 step = this->clockTime() + reach;
        if (isTooFar(failure) && step < clockTime)
            failure = set(step, reached);
    }
    return failure;
}

int RtcAlarm::clear() const
{
    return write("0");
}

qint64 RtcAlarm::fromDate(const QDateTime &date) const
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    return milliseconds / 1000 + (milliseconds % 1000 > 0 ? 1 : 0) + m_offset;
}

QDateTime RtcAlarm::toDate(qint64 clockTime) const
{
    return QDateTime::fromSecsSinceEpoch(clockTime - m_offset, Qt::UTC);
}

} // namespace dozely
