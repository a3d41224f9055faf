// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/ZDRLog.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/AppendLine_p.h"
#include "DozelyKit/core/log/LogLabel.h"

#include <QStringEncoder>
#include <QVarLengthArray>

#include <array>
#include <atomic>
#include <charconv>
#include <cstring>
#include <ctime>
#include <string_view>

using namespace dozely;

namespace
{
// Bytes that grow, in place unless there are very many: a line should cost little more than its system calls.
using Bytes = QVarLengthArray<char, 1024>;

constexpr qsizetype stampLength = 16; // "Mar 04 09:15:02 "

void append(Bytes &bytes, std::string_view text)
{
    bytes.append(text.data(), static_cast<qsizetype>(text.size()));
}

void appendText(Bytes &bytes, QStringView text)
{
    QStringEncoder encoder(QStringEncoder::Utf8);
    const qsizetype size = bytes.size();
    bytes.resize(size + encoder.requiredSpace(text.size()));
    bytes.resize(encoder.appendToBuffer(bytes.data() + size, text) - bytes.data());
}

// What comes from elsewhere must not begin a line in another's name, or steer the terminal of who reads the
// log.
void appendOneLine(Bytes &bytes, QStringView text)
{
    if (isOneLine(text))
        appendText(bytes, text);
    else
        appendText(bytes, logLabel(text.toString(), wholeText));
}

void appendMessage(Bytes &bytes, const QString &message)
{
    // Some texts of the system bring a line end of their own, which leaves an empty line.
    const bool hasLineEnd = message.endsWith(u'\n');
    appendOneLine(bytes, QStringView(message).chopped(hasLineEnd ? 1 : 0));
    if (hasLineEnd)
        append(bytes, "\n");
}

Bytes logPath()
{
    Bytes path;
    appendText(path, RootFolder::path());
    append(path, "/var/log/dozely.log");
    path.append('\0');
    return path;
}

void appendNumber(Bytes &bytes, qint32 number)
{
    std::array<char, 12> digits{};
    const auto result = std::to_chars(digits.begin(), digits.end(), number);
    append(bytes, std::string_view(digits.data(), static_cast<std::size_t>(result.ptr - digits.data())));
}

// A daemon lives long enough to see its machine move to another time zone, and localtime_r does not look:
// have the zone read again in the first line of each minute. How often it was.
quint32 refreshTimeZone(std::time_t now)
{
    static std::atomic<std::time_t> lastMinute{-1};
    static std::atomic<quint32> readings{0};
    constexpr std::time_t secondsPerMinute = 60;
    const std::time_t minute = now / secondsPerMinute;
    if (lastMinute.exchange(minute, std::memory_order_relaxed) != minute) {
        ::tzset();
        readings.fetch_add(1, std::memory_order_release);
    }
    return readings.load(std::memory_order_acquire);
}

// The local time in front of a line. By hand, since each line pays for it, and English whatever the locale.
void formatStamp(std::time_t now, char *stamp)
{
    static constexpr std::array<const char *, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm local{};
    ::localtime_r(&now, &local);
    const auto writeTwoDigits = [](char *to, int value, char after) {
        to[0] = static_cast<char>('0' + value / 10);
        to[1] = static_cast<char>('0' + value % 10);
        to[2] = after;
    };
    std::memcpy(stamp, months.at(static_cast<std::size_t>(local.tm_mon)), 3);
    stamp[3] = ' ';
    writeTwoDigits(stamp + 4, local.tm_mday, ' ');
    writeTwoDigits(stamp + 7, local.tm_hour, ':');
    writeTwoDigits(stamp + 10, local.tm_min, ':');
    writeTwoDigits(stamp + 13, local.tm_sec, ' ');
}

// The stamp of the last line is that of the next one, too, within a second and with the zone read no more
// often: in some zones to work it out takes as long as a system call.
void writeStamp(char *stamp)
{
    struct Last {
        std::time_t second = -1;
        quint32 zoneReading = 0;
        std::array<char, stampLength> stamp{};
    };
    static thread_local Last last;
    const auto now = static_cast<std::time_t>(Port<Clock>::current()->currentDate().toSecsSinceEpoch());
    const quint32 zoneReading = refreshTimeZone(now);
    if (last.second != now || last.zoneReading != zoneReading) {
        formatStamp(now, last.stamp.data());
        last.second = now;
        last.zoneReading = zoneReading;
    }
    std::memcpy(stamp, last.stamp.data(), stampLength);
}

// What the log does not take is kept by whoever keeps the console log of this process, a line each.
void tellConsole(std::string_view line)
{
    while (line.ends_with('\n'))
        line.remove_suffix(1);
    NSLogText(logLabel(QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())), wholeText));
}

// Appends `line`, at whose head the stamp's place was left free.
void appendStamped(Bytes &line, const char *path, HalfLine last,
                   quint32 effectiveUserID = NSProcessInfo::effectiveUserID())
{
    writeStamp(line.data());
    const std::string_view bytes(line.constData(), static_cast<std::size_t>(line.size()));
    const AppendResult result = appendLine(path, bytes, effectiveUserID == 0, last);
    if (result.openError != 0) {
        NSLog("Could not open file for writing (errno: %d)", result.openError);
        tellConsole(bytes);
    } else if (result.writeError != 0)
        NSLog("Could not write to file (errno: %d)", result.writeError);
}

void appendAs(std::string_view role, const QString &message)
{
    const quint32 effectiveUserID = NSProcessInfo::effectiveUserID();
    Bytes line(stampLength);
    append(line, "(");
    appendNumber(line, NSProcessInfo::processIdentifier());
    append(line, " - ");
    appendNumber(line, NSProcessInfo::parentProcessIdentifier());
    append(line, " - ");
    appendNumber(line, static_cast<qint32>(effectiveUserID));
    append(line, " - ");
    append(line, role);
    append(line, "): ");
    appendMessage(line, message);
    append(line, "\n");
    appendStamped(line, logPath().constData(), HalfLine::Close, effectiveUserID);
}

void appendWithName(const QString &process, const QString &message)
{
    Bytes line(stampLength);
    appendOneLine(line, process);
    append(line, " ");
    appendMessage(line, message);
    append(line, "\n");
    appendStamped(line, logPath().constData(), HalfLine::Close);
}
} // namespace

void ZDRAppendStringToFile(const QString &string, const QString &path)
{
    Bytes line(stampLength);
    appendText(line, string);
    appendStamped(line, path.toUtf8().constData(), HalfLine::Continue);
}

void ZDRLogDaemon(const QString &message)
{
    appendAs("Daemon", message);
}

void ZDRLogUserAgent(const QString &message)
{
    appendAs("User Agent", message);
}

void ZDRLogPrefPane(const QString &message)
{
    appendAs("App", message);
}

void ZDRLogAdmin(const QString &message)
{
    appendAs("Admin", message);
}

void ZDRLogText(const QString &message)
{
    const QString process = NSProcessInfo::processName();
    // What a performer has to say comes from an action of its host.
    if (process == u"dozelyd" || process == u"dozely-performer")
        ZDRLogDaemon(message);
    else if (process == u"Dozely Agent" || process == u"dozely-session-performer")
        ZDRLogUserAgent(message);
    else if (process == u"Dozely")
        ZDRLogPrefPane(message);
    else if (process == u"Dozely Admin")
        ZDRLogAdmin(message);
    else
        appendWithName(process, message);
}
